// Receives signals through a file descriptor, so that poll can wait for signals and other files at
// the same time.
#pragma once

#include <csignal>

namespace dataset {

// Receives SIGCHLD and the signals that ask to stop: SIGINT, SIGTERM and SIGHUP. A signal that asks
// to stop is left out if the process ignores it. While an object of this class exists, these
// signals are blocked and stay pending until the object receives them.
class SignalWatch {
  public:
    SignalWatch();   // throws std::system_error
    ~SignalWatch();  // restores the signal mask; pending signals are discarded
    SignalWatch(const SignalWatch&) = delete;
    SignalWatch& operator=(const SignalWatch&) = delete;

    // A file descriptor that is readable while a signal is pending. It belongs to this object.
    int File() const { return file_; }
    // Receives all pending signals and returns how many of them asked to stop.
    int ReceiveStops() const;

  private:
    int file_ = -1;
    sigset_t previousMask_;
};

}  // namespace dataset
