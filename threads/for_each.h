#pragma once

#include <atomic>
#include <cstddef>

#include "threads/helpers.h"

namespace threads {

// Calls work(index) once for each index from 0 to `count` - 1, on at most `threads` threads,
// the calling one included. The calls begin in the order of the indices, and some run at the same
// time. Returns after the last call has ended. `work` must not throw.
template <class Work>
void ForEach(std::size_t count, std::size_t threads, const Work& work) noexcept {
    struct Loop {
        const Work& work;
        std::size_t count;
        std::atomic<std::size_t> next{0};

        static void Run(void* context) noexcept {
            Loop& loop = *static_cast<Loop*>(context);
            for (std::size_t index = loop.next++; index < loop.count; index = loop.next++)
                loop.work(index);
        }
    };
    Loop loop{work, count};
    const std::size_t useful = threads < count ? threads : count;
    const Helpers helpers(useful > 1 ? useful - 1 : 0, Loop::Run, &loop);
    Loop::Run(&loop);
}

}  // namespace threads
