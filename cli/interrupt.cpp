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
std::atomic<bool> endLineOnExit = false;
static_assert(std::atomic<bool>::is_always_lock_free);

// While an ExitOnInterruptScope exists, a signal ends the process with kCancelled. While none
// exists, the first signal is only recorded. A second signal then ends the process in the system's
// default way.
extern "C" void OnInterrupt(int signal) {
    if (exitOnInterrupt) {
        files::RemoveMendedFolder();
        // If the line break cannot be written, nothing can be done about it.
        if (endLineOnExit && write(STDERR_FILENO, "\n", 1) != 1) endLineOnExit = false;
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

// Returns whether the signal is SIGHUP and is ignored. For example, nohup starts a program with
// SIGHUP ignored. Such a program must continue when its terminal is closed.
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

ExitOnInterruptScope::ExitOnInterruptScope(bool isLineDrawn) noexcept {
    endLineOnExit = isLineDrawn;
    exitOnInterrupt = true;
}
ExitOnInterruptScope::~ExitOnInterruptScope() {
    exitOnInterrupt = false;
}

bool Interrupted() noexcept {
    return interrupted;
}

}  // namespace cli
