#include "mocap/row_blocks.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "threads/helpers.h"

namespace {

// A block of this size is long enough to be worth a lock, and short enough for the cache.
constexpr std::size_t kBlockBytes = std::size_t{128} << 10U;
// So many blocks for each thread keep all threads busy until nearly the end.
constexpr std::size_t kBlocksPerThread = 8;
// Two blocks whose values are in different cache lines do not disturb each other.
constexpr std::size_t kLineValues = 8;

// Returns the start of the line that is `lines` lines after `at`, or null if there are fewer lines.
const char* SkipLines(const char* at, const char* last, std::size_t lines) {
    for (; lines > 0; --lines) {
        const void* const feed = std::memchr(at, '\n', static_cast<std::size_t>(last - at));
        if (feed == nullptr) return nullptr;
        at = static_cast<const char*>(feed) + 1;
    }
    return at;
}

}  // namespace

RowBlocks::RowBlocks(const char* first, const char* last, const Reader& reader, std::size_t lines,
                     std::size_t rows)
    : last_(last), reader_(reader), lines_(lines), rows_(rows), nextFirst_(first) {}

bool RowBlocks::Allocate(std::size_t threads) {
    const std::size_t bytes = std::max<std::size_t>(
        static_cast<std::size_t>(last_ - nextFirst_) / std::max<std::size_t>(rows_, 1), 1);
    const std::size_t fair = rows_ / (threads * kBlocksPerThread);
    blockRows_ = std::max<std::size_t>(std::min(fair, kBlockBytes / bytes), 1);
    if (blockRows_ > kLineValues) blockRows_ -= blockRows_ % kLineValues;
    blockCount_ = (rows_ + blockRows_ - 1) / blockRows_;
    blocks_.reset(new (std::nothrow) Block[blockCount_]);
    return blocks_ != nullptr;
}

// While this thread looks for the end of its block, no other thread can reserve one. That takes a
// few hundredths of the time in which the block is read.
bool RowBlocks::Reserve(std::size_t& block) {
    const std::lock_guard lock(mutex_);
    if (nextFirst_ == nullptr || nextBlock_ == blockCount_) return false;
    block = nextBlock_++;
    blocks_[block].first = nextFirst_;
    const std::size_t rows = std::min(blockRows_, rows_ - block * blockRows_);
    nextFirst_ = SkipLines(nextFirst_, last_, rows * lines_);
    return true;
}

void RowBlocks::ReadBlock(std::size_t block) {
    Block& self = blocks_[block];
    const std::size_t firstRow = block * blockRows_;
    const std::size_t rows = std::min(blockRows_, rows_ - firstRow);
    const char* at = self.first;
    std::size_t row = 0;
    for (; row < rows && at != nullptr && at != last_; ++row) {
        at = reader_.ReadRow(at, last_, firstRow + row);
        if (at == nullptr) break;
    }
    self.rowsRead = row;
    if (row < rows) Stop();
    self.isFinished.store(true, std::memory_order_release);
}

void RowBlocks::Help(void* blocks) noexcept {
    RowBlocks& self = *static_cast<RowBlocks*>(blocks);
    for (std::size_t block = 0; self.Reserve(block);)
        self.ReadBlock(block);
}

void RowBlocks::Stop() {
    const std::lock_guard lock(mutex_);
    nextFirst_ = nullptr;
}

bool RowBlocks::Report(Listener& listener) {
    while (reported_ < blockCount_ &&
           blocks_[reported_].isFinished.load(std::memory_order_acquire)) {
        const std::size_t rows = blocks_[reported_].rowsRead;
        rowsRead_ = reported_ * blockRows_ + rows;
        ++reported_;
        if (rows > 0 && !listener.HasRead(rowsRead_)) return false;
        if (rows < blockRows_) return false;
    }
    return true;
}

void RowBlocks::Read(std::size_t threads, Listener& listener) {
    // Stops the helpers before they are joined, however this function ends.
    struct Stopper {
        RowBlocks& blocks;
        ~Stopper() { blocks.Stop(); }
    };
    if (rows_ == 0 || !Allocate(threads)) return;
    threads::Helpers helpers(threads - 1, Help, this);
    const Stopper stopper{*this};
    bool goesOn = true;
    for (std::size_t block = 0; goesOn && Reserve(block);) {
        ReadBlock(block);
        goesOn = Report(listener);
    }
    if (!goesOn) return;
    helpers.Join();
    Report(listener);
}

const char* RowBlocks::StartOf(std::size_t row) const {
    return SkipLines(blocks_[row / blockRows_].first, last_, row % blockRows_ * lines_);
}
