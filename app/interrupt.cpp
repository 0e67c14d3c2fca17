#include "app/interrupt.h"

#include <atomic>
#include <csignal>
#include <unistd.h>

#include "app/outcome.h"
#include "headless/session.h"

namespace app {
namespace {

constexpr int kStopSignals[] = {SIGINT, SIGTERM};

std::atomic<headless::Session*> cancelTarget = nullptr;
std::atomic<bool> interrupted = false;
std::atomic<bool> uncancellable = false;
static_assert(std::atomic<headless::Session*>::is_always_lock_free &&
              std::atomic<bool>::is_always_lock_free);

extern "C" void OnInterrupt(int) {
    if (uncancellable) _exit(kCancelled);
    interrupted = true;
    if (headless::Session* session = cancelTarget) session->PressCancel();
}

}  // namespace

void CatchInterrupts(headless::Session& session) {
    cancelTarget = &session;
    struct sigaction action {};
    action.sa_handler = OnInterrupt;
    // The second one finds the system's own handling again.
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    for (const int signal : kStopSignals)
        sigaction(signal, &action, nullptr);
}

void ReleaseInterrupts() {
    for (const int signal : kStopSignals)
        std::signal(signal, SIG_DFL);
}

void BeginUncancellable() noexcept {
    uncancellable = true;
}
void EndUncancellable() noexcept {
    uncancellable = false;
}

bool Interrupted() noexcept {
    return interrupted;
}

}  // namespace app
