#include "threads/helpers.h"

#include <algorithm>
#include <signal.h>  // NOLINT(modernize-deprecated-headers): <csignal> has no signal masks

namespace threads {
namespace {

// Blocks the signals that a process gets from outside, for the calling thread and the threads that
// it starts meanwhile. The destructor restores the mask. A host handles its signals on its own
// threads.
class BlockedSignals {
  public:
    BlockedSignals() {
        sigset_t blocked;
        sigfillset(&blocked);
        for (const int error : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGABRT, SIGSYS})
            sigdelset(&blocked, error);
        pthread_sigmask(SIG_SETMASK, &blocked, &before_);
    }
    ~BlockedSignals() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    BlockedSignals(const BlockedSignals&) = delete;
    BlockedSignals& operator=(const BlockedSignals&) = delete;

  private:
    sigset_t before_;
};

}  // namespace

Helpers::Helpers(std::size_t count, Work work, void* context) noexcept
    : work_(work), context_(context) {
    if (count == 0) return;
    const BlockedSignals blocked;
    for (count = std::min(count, kMost); started_ < count; ++started_)
        if (pthread_create(&threads_[started_], nullptr, Run, this) != 0) return;
}

void* Helpers::Run(void* helpers) noexcept {
    const Helpers& self = *static_cast<const Helpers*>(helpers);
    self.work_(self.context_);
    return nullptr;
}

void Helpers::Join() noexcept {
    while (started_ > 0)
        pthread_join(threads_[--started_], nullptr);
}

}  // namespace threads
