#include "threads/block_order.h"

#include <utility>

namespace threads {
namespace {

// Blocks take about the same time, so a thread mostly waits for a few microseconds. A thread that
// sleeps takes longer than that to wake up.
constexpr int kLooks = 400;

void Pause() {
#if defined(__x86_64__)
    __builtin_ia32_pause();
#endif
}

}  // namespace

bool BlockOrder::HasFailedBefore(std::size_t block) {
    const std::lock_guard lock(mutex_);
    return exception_ && failed_ < block;
}

void BlockOrder::Fail(std::size_t block, std::exception_ptr exception) {
    {
        const std::lock_guard lock(mutex_);
        if (exception_ && failed_ < block) return;
        failed_ = block;
        exception_ = std::move(exception);
    }
    changed_.notify_all();
}

void BlockOrder::WaitFor(std::size_t step, std::size_t block) {
    for (int i = 0; i < kLooks; ++i) {
        if (done_[step] == block) return;
        Pause();
    }
    std::unique_lock lock(mutex_);
    const auto hasFailed = [&] { return exception_ && failed_ < block; };
    changed_.wait(lock, [&] { return done_[step] == block || hasFailed(); });
    if (hasFailed()) throw Stopped();
}

void BlockOrder::Finish(std::size_t step) {
    {
        const std::lock_guard lock(mutex_);
        ++done_[step];
    }
    changed_.notify_all();
}

}  // namespace threads
