// Signals received through a file descriptor, which poll can wait for together with others.
#pragma once

#include <csignal>

namespace dataset {

// While this exists, SIGCHLD and the signals that ask to stop (SIGINT, SIGTERM and SIGHUP, unless
// the process ignores them) are blocked and wait to be received here. The constructor throws
// std::system_error.
class SignalWatch {
  public:
    SignalWatch();
    ~SignalWatch();
    SignalWatch(const SignalWatch&) = delete;
    SignalWatch& operator=(const SignalWatch&) = delete;

    // A file descriptor that is readable when a signal waits.
    int File() const { return file_; }
    // Receives all signals that wait; returns how many of them asked to stop.
    int ReceiveStops() const;

  private:
    int file_ = -1;
    sigset_t previousMask_;
};

}  // namespace dataset
