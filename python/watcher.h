// Lets Python see how far a long call is, and cancel it.
#pragma once

#include <chrono>
#include <exception>
#include <optional>
#include <pybind11/pybind11.h>

namespace python {

// Create and destroy it while holding the interpreter's lock. All other functions are called on the
// same thread, without that lock.
class Watcher {
  public:
    // `callback` is None or a function that receives the share that is done, from 0 to 1.
    explicit Watcher(pybind11::object callback) : callback_(std::move(callback)) {}

    // Handles signals such as that of Ctrl-C and calls the callback, but at most every few
    // milliseconds. Returns whether the call has to stop because one of them raised an exception.
    bool Poll(double share);
    // Like Poll, but for calls that happen extremely often: most of them only count.
    bool PollOften(double share) {
        if (++polls_ % kPollsPerLook != 0) return IsCancelled();
        return Poll(share);
    }
    bool IsCancelled() const { return raised_ != nullptr; }
    // Throws the exception that Python raised, if it raised one. Needs the interpreter's lock.
    void Rethrow() const {
        if (raised_) std::rethrow_exception(raised_);
    }

  private:
    using Clock = std::chrono::steady_clock;
    static constexpr unsigned kPollsPerLook = 64;

    pybind11::object callback_;
    std::exception_ptr raised_;
    std::optional<Clock::time_point> last_;
    double shown_ = -1.0;
    unsigned polls_ = 0;
};

}  // namespace python
