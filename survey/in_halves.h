// Splits a loop into two halves and runs the second one on another thread.
#pragma once

#include <cstddef>
#include <exception>

#ifdef ZKMOCAP_HAVE_THREADS
#include <system_error>
#include <thread>
#endif

namespace survey {

// Calls work(first, last) for the indices from 0 to `count` - 1. One call processes the indices
// from `first` to `last` - 1. If `count` is less than `worthwhile`, or if there is no second
// processor or thread, one call processes all indices. In all other cases, two calls run at the
// same time, one for each half of the indices. If a call throws, its exception is rethrown after
// both calls have ended. If both throw, the exception of the call for the first half is rethrown.
template <class Work>
void InHalves(std::size_t count, std::size_t worthwhile, const Work& work) {
#ifdef ZKMOCAP_HAVE_THREADS
    if (count >= 2 && count >= worthwhile && std::thread::hardware_concurrency() > 1) {
        std::exception_ptr failure;
        std::thread second;
        try {
            second = std::thread([&] {
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
            second.join();
            throw;
        }
        second.join();
        if (failure) std::rethrow_exception(failure);
        return;
    }
#endif
    static_cast<void>(worthwhile);
    work(std::size_t{0}, count);
}

}  // namespace survey
