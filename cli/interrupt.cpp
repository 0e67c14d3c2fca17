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
std::atomic<bool> uncancellable = false;
static_assert(std::atomic<bool>::is_always_lock_free);

// The second one ends the process by the system's own handling.
extern "C" void OnInterrupt(int signal) {
    if (uncancellable) {
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

// Whether whoever started this program chose that it goes on when the terminal is closed.
bool OutlivesTerminal(int signal) {
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
        if (!OutlivesTerminal(signal)) sigaction(signal, &action, nullptr);
}

void ReleaseInterrupts() {
    for (const int signal : kStopSignals)
        if (!OutlivesTerminal(signal)) std::signal(signal, SIG_DFL);
}

UncancellableStretch::UncancellableStretch() noexcept {
    uncancellable = true;
}
UncancellableStretch::~UncancellableStretch() {
    uncancellable = false;
}

bool Interrupted() noexcept {
    return interrupted;
}

}  // namespace cli
