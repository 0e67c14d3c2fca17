#include "cli/interrupt.h"

#include <atomic>
#include <csignal>
#include <unistd.h>

#include "dataset/exit_status.h"
#include "files/mended_folder.h"

namespace cli {
namespace {

constexpr int kStopSignals[] = {SIGINT, SIGTERM, SIGHUP};

std::atomic<bool> interrupted = false;
std::atomic<bool> exitOnInterrupt = false;
static_assert(std::atomic<bool>::is_always_lock_free);

// The first signal is recorded; a second one ends the process as the system does by default.
extern "C" void OnInterrupt(int signal) {
    if (exitOnInterrupt) {
        files::RemoveMendedFolder();
        _exit(dataset::kCancelled);
    }
    if (interrupted) {
        files::RemoveMendedFolder();
        std::signal(signal, SIG_DFL);
        raise(signal);
        return;
    }
    interrupted = true;
}

// Returns whether the program was started so that it continues after its terminal is closed
// (nohup).
bool IgnoresHangup(int signal) {
    struct sigaction action {};
    return signal == SIGHUP && sigaction(signal, nullptr, &action) == 0 &&
           action.sa_handler == SIG_IGN;
}

}  // namespace

void CatchInterrupts() {
    struct sigaction action {};
    action.sa_handler = OnInterrupt;
    action.sa_flags = SA_RESTART;
    for (const int signal : kStopSignals)
        if (!IgnoresHangup(signal)) sigaction(signal, &action, nullptr);
}

void RestoreInterrupts() {
    for (const int signal : kStopSignals)
        if (!IgnoresHangup(signal)) std::signal(signal, SIG_DFL);
}

ExitOnInterruptScope::ExitOnInterruptScope() noexcept {
    exitOnInterrupt = true;
}
ExitOnInterruptScope::~ExitOnInterruptScope() {
    exitOnInterrupt = false;
}

bool Interrupted() noexcept {
    return interrupted;
}

}  // namespace cli
