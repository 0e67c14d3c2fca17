// Divides work between threads.
// Internal to export/.
#pragma once

#include <algorithm>
#include <cstddef>
#include <future>
#include <vector>

#include "export/launch.h"
#include "threads/signals_blocked.h"
#include "threads/thread_count.h"

namespace exporters {

// Returns into how many parts to divide work on this many poses of joints: at most `threads`, or
// threads::Most() if that is 0, and none so short that a thread would hardly be worth its
// start.
inline std::size_t PartsFor(std::size_t poses, std::size_t threads = 0) {
    constexpr std::size_t kFewestPoses = 20'000;
    if (threads == 0) threads = threads::Most();
    return std::clamp<std::size_t>(poses / kFewestPoses, 1, threads);
}

// Calls work(part) for each part, counted from 0: the first one on this thread, each other one on a
// thread of its own. Passes on the exception of the first part that throws.
template <class Work>
void RunParts(std::size_t parts, const Work& work) {
    std::vector<std::future<void>> others;
    if (parts > 1) {
        const threads::SignalsBlocked blocked;  // a host handles its signals on its own threads
        for (std::size_t part = 1; part < parts; ++part)
            others.push_back(std::async(kLaunch, [&work, part] { work(part); }));
    }
    // If this throws, the destructors of the futures wait for the other threads.
    work(std::size_t{0});
    for (std::future<void>& other : others)
        other.get();
}

}  // namespace exporters
