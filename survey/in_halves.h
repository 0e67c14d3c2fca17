// Work on many like things in two halves, the second one on another thread.
#pragma once

#include <cstddef>
#include <exception>

#ifdef ZKMOCAP_HAVE_THREADS
#include <system_error>
#include <thread>
#endif

namespace survey {

// Calls work(first, last) for [0, count), or for its two halves at the same time where there are at
// least `worthwhile` and the machine has two processors. What a half throws comes through, after
// both have ended.
template <class Work>
void InHalves(std::size_t count, std::size_t worthwhile, const Work& work) {
#ifdef ZKMOCAP_HAVE_THREADS
    if (count >= 2 && count >= worthwhile && std::thread::hardware_concurrency() > 1) {
        std::exception_ptr failure;
        std::thread other;
        try {
            other = std::thread([&] {
                try {
                    work(count / 2, count);
                } catch (...) {
                    failure = std::current_exception();
                }
            });
        } catch (const std::system_error&) {
            // Without another thread this one does it all.
            return work(std::size_t{0}, count);
        }
        try {
            work(std::size_t{0}, count / 2);
        } catch (...) {
            other.join();
            throw;
        }
        other.join();
        if (failure) std::rethrow_exception(failure);
        return;
    }
#endif
    static_cast<void>(worthwhile);
    work(std::size_t{0}, count);
}

}  // namespace survey
