#include "python/number_memory.h"

#include <algorithm>
#include <mutex>
#include <new>
#include <utility>

#include "memory/large_memory.h"

namespace python {

namespace py = pybind11;

namespace {

// Smaller arrays are left to NumPy.
constexpr std::size_t kSmallest = std::size_t{256} << 10;
// The most bytes that are kept while no array uses them.
constexpr std::size_t kMostKept = std::size_t{64} << 20;

struct Block {
    memory::LargeMemory memory;
    std::size_t bytes = 0;
};

// The blocks that no array uses. Any thread may use it.
class Kept {
  public:
    // Returns a kept block that has enough room, but not more than twice as much. Its memory is
    // null if there is none.
    Block Release(std::size_t bytes) {
        const std::lock_guard<std::mutex> lock(mutex_);
        const auto found = std::find_if(blocks_.begin(), blocks_.end(), [&](const Block& block) {
            return block.bytes >= bytes && block.bytes / 2 <= bytes;
        });
        if (found == blocks_.end()) return {};
        Block block = std::move(*found);
        blocks_.erase(found);
        bytes_ -= block.bytes;
        return block;
    }

    // Keeps a block and frees the ones that were kept first, if they would be too much.
    void Receive(Block block) {
        if (block.bytes > kMostKept) return;
        std::vector<Block> freed;  // after the lock is gone
        const std::lock_guard<std::mutex> lock(mutex_);
        auto end = blocks_.begin();
        for (; bytes_ + block.bytes > kMostKept; ++end)
            bytes_ -= end->bytes;
        freed.assign(std::move_iterator(blocks_.begin()), std::move_iterator(end));
        blocks_.erase(blocks_.begin(), end);
        bytes_ += block.bytes;
        blocks_.push_back(std::move(block));
    }

    // It is never destroyed, because arrays may exist until the process ends.
    static Kept& Only() {
        static Kept* const kept = new Kept;
        return *kept;
    }

  private:
    std::mutex mutex_;
    std::vector<Block> blocks_;  // the one that was kept first comes first
    std::size_t bytes_ = 0;
};

void Drop(void* pointer) {
    auto* const block = static_cast<Block*>(pointer);
    try {
        Kept::Only().Receive(std::move(*block));
    } catch (const std::bad_alloc&) {
        // The block is freed instead.
        block->bytes = 0;
    }
    delete block;
}

}  // namespace

py::array_t<double> MakeArray(const std::vector<std::size_t>& shape) {
    std::size_t bytes = sizeof(double);
    for (const std::size_t length : shape)
        bytes *= length;
    if (bytes < kSmallest) return py::array_t<double>(shape);
    Block block = Kept::Only().Release(bytes);
    if (!block.memory) block = {memory::AllocateLargeMemory(bytes), bytes};
    if (!block.memory) throw std::bad_alloc();
    auto* const numbers = static_cast<double*>(block.memory.get());
    const py::capsule owner(new Block(std::move(block)), Drop);
    return py::array_t<double>(shape, numbers, owner);
}

}  // namespace python
