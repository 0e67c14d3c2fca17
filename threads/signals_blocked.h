#pragma once

#include <csignal>

namespace files {

// Blocks all signals in this thread while an object of this class exists. Threads that are started
// meanwhile inherit that and never handle a signal.
class SignalsBlocked {
  public:
    SignalsBlocked() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_BLOCK, &all, &former_);
    }
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &former_, nullptr); }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;

  private:
    sigset_t former_{};
};

}  // namespace files
