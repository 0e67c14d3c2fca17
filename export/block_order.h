// Lets several threads work on the blocks of a file whose parts must follow each other.
// Internal to export/.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <exception>
#include <mutex>
#include <vector>

#include "export/run_parts.h"

namespace exporters {

// Each thread takes the next block that nobody has taken, so none has to wait for a slower one,
// except for the steps that are done in the order of the blocks, such as writing.
class BlockOrder {
  public:
    // `steps` is how many steps are done in order; they are counted from 0.
    explicit BlockOrder(std::size_t steps) : done_(steps) {}

    // Calls work(thread, block) once for each block, counted from 0, on at most `threads` threads,
    // counted from 0; thread 0 is the calling one. Each call of `work` must call InOrder for every
    // step, with rising numbers. If calls throw, no more blocks are begun, and the exception of the
    // first such block in the order of the file is passed on. It is the same for any number of
    // threads if it does not depend on time.
    template <class Work>
    void Run(std::size_t blocks, std::size_t threads, const Work& work) {
        std::atomic<std::size_t> next{0};
        RunParts(threads, [&](std::size_t thread) {
            for (std::size_t block = next++; block < blocks; block = next++) {
                if (HasFailedBefore(block)) return;
                try {
                    work(thread, block);
                } catch (...) {
                    Fail(block, std::current_exception());
                    return;
                }
            }
        });
        if (exception_) std::rethrow_exception(exception_);
    }

    // Calls work() as soon as all blocks before this one have done the step.
    template <class Work>
    void InOrder(std::size_t step, std::size_t block, const Work& work) {
        WaitFor(step, block);
        work();
        Finish(step);
    }

  private:
    struct Stopped {};  // thrown in a block if an earlier one has failed

    bool HasFailedBefore(std::size_t block);
    void Fail(std::size_t block, std::exception_ptr exception);
    void WaitFor(std::size_t step, std::size_t block);
    void Finish(std::size_t step);

    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<std::size_t> done_;  // for each step, how many blocks have done it
    std::exception_ptr exception_;
    std::size_t failed_ = 0;  // the first block that failed, if there is an exception
};

}  // namespace exporters
