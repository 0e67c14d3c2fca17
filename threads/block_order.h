// Lets several threads work on the blocks of a text or a file whose parts must follow each other.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <exception>
#include <mutex>
#include <vector>

#include "threads/helpers.h"

namespace threads {

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
        struct Loop {
            BlockOrder& order;
            const Work& work;
            std::size_t blocks;
            std::atomic<std::size_t> nextThread{0};
            std::atomic<std::size_t> nextBlock{0};

            static void Help(void* context) noexcept {
                Loop& loop = *static_cast<Loop*>(context);
                loop.Run(++loop.nextThread);
            }
            void Run(std::size_t thread) noexcept {
                for (std::size_t block = nextBlock++; block < blocks; block = nextBlock++)
                    if (!order.Do(block, [&] { work(thread, block); })) return;
            }
        };
        Loop loop{*this, work, blocks};
        {
            const std::size_t useful = threads < blocks ? threads : blocks;
            const Helpers helpers(useful > 1 ? useful - 1 : 0, Loop::Help, &loop);
            loop.Run(0);
        }
        if (exception_) std::rethrow_exception(exception_);
    }

    // Calls work() as soon as all blocks before this one have done the step. Throws if one of them
    // has failed; the caller must pass that on.
    template <class Work>
    void InOrder(std::size_t step, std::size_t block, const Work& work) {
        WaitFor(step, block);
        work();
        Finish(step);
    }

  private:
    struct Stopped {};  // thrown in a block if an earlier one has failed

    // Returns false if no more blocks are to be begun.
    template <class Work>
    bool Do(std::size_t block, const Work& work) noexcept {
        if (HasFailedBefore(block)) return false;
        try {
            work();
        } catch (...) {
            Fail(block, std::current_exception());
            return false;
        }
        return true;
    }
    bool HasFailedBefore(std::size_t block);
    void Fail(std::size_t block, std::exception_ptr exception);
    void WaitFor(std::size_t step, std::size_t block);
    void Finish(std::size_t step);

    std::mutex mutex_;
    std::condition_variable changed_;
    // For each step, how many blocks have done it. Changed only while the mutex is locked.
    std::vector<std::atomic<std::size_t>> done_;
    std::exception_ptr exception_;
    std::size_t failed_ = 0;  // the first block that failed, if there is an exception
};

}  // namespace threads
