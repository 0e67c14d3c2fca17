// Splits a loop into two halves and runs the second one on another thread.
#pragma once

#include <cstddef>
#include <exception>

#ifdef ZKMOCAP_HAVE_THREADS
#include <system_error>
#include <thread>
#endif

namespace survey {

// Calls work(0, count), or work(0, count / 2) and work(count / 2, count) at the same time if
// `count` is at least `worthwhile` and the machine has more than one processor. An exception of
// either half is rethrown after both have ended; if both throw, that of the first half.
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
            // The thread could not be started.
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
