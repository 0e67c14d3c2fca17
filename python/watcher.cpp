#include "python/watcher.h"

namespace python {

namespace py = pybind11;

bool Watcher::Poll(double share) {
    constexpr std::chrono::milliseconds kPause(10);
    if (raised_) return true;
    const Clock::time_point now = Clock::now();
    if (last_ && now - *last_ < kPause) return false;
    last_ = now;
    const py::gil_scoped_acquire lock;
    try {
        if (PyErr_CheckSignals() != 0) throw py::error_already_set();
        if (!callback_.is_none() && share != shown_) callback_(share);
        shown_ = share;
    } catch (const py::error_already_set&) {
        raised_ = std::current_exception();
    }
    return raised_ != nullptr;
}

}  // namespace python
