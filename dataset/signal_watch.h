// Signals as something to wait for among files.
#pragma once

#include <csignal>

namespace dataset {

// While it lives, the end of a child and requests to stop (SIGINT, SIGTERM, SIGHUP; those that were
// not ignored already) do nothing of themselves and wait here. Throws std::system_error.
class SignalWatch {
  public:
    SignalWatch();
    ~SignalWatch();
    SignalWatch(const SignalWatch&) = delete;
    SignalWatch& operator=(const SignalWatch&) = delete;

    // Readable when something waits.
    int File() const { return file_; }
    // Takes what waits; returns how many requests to stop were among it.
    int TakeStops() const;

  private:
    int file_ = -1;
    sigset_t before_;
};

}  // namespace dataset
