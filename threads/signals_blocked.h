#pragma once

#include <initializer_list>
#include <signal.h>  // NOLINT(modernize-deprecated-headers): <csignal> has no signal masks

namespace threads {

// Blocks the signals that a process gets from outside, in this thread, while an object of this
// class exists. Threads that are started meanwhile inherit that: they never handle such a signal.
// The signals that an error of the thread itself raises are not blocked.
class SignalsBlocked {
  public:
    SignalsBlocked() {
        sigset_t blocked;
        sigfillset(&blocked);
        for (const int error : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGABRT, SIGSYS})
            sigdelset(&blocked, error);
        pthread_sigmask(SIG_BLOCK, &blocked, &former_);
    }
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &former_, nullptr); }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;

  private:
    sigset_t former_{};
};

}  // namespace threads
