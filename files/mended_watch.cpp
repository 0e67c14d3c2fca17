#include "files/mended_watch.h"

#include <array>
#include <csignal>
#include <cstddef>

#include "files/mended_folder.h"

namespace files {
namespace {

// Signals that end a process which does not handle them. Some are sent after crashes (see IsCrash).
constexpr std::array kFatalSignals = {SIGSEGV, SIGBUS,  SIGFPE,  SIGILL,  SIGABRT,
                                      SIGSYS,  SIGQUIT, SIGPIPE, SIGALRM, SIGTERM,
                                      SIGHUP,  SIGINT,  SIGXCPU, SIGUSR1, SIGUSR2};
std::array<struct sigaction, kFatalSignals.size()> formerActions;  // in the order of kFatalSignals

// The handler has its own stack, because a full stack may be the reason for the crash.
std::array<char, 65536> handlerStack;

// Whether the action is the default action, which ends the process for each of kFatalSignals.
bool EndsTheProcess(const struct sigaction& action) {
    return (action.sa_flags & SA_SIGINFO) == 0 && action.sa_handler == SIG_DFL;
}

bool IsCrash(int signal) {
    return signal == SIGSEGV || signal == SIGBUS || signal == SIGFPE || signal == SIGILL ||
           signal == SIGABRT || signal == SIGSYS;
}

// Whether an instruction of the program caused the signal. When the handler returns, the processor
// executes that instruction again, and the signal comes again. If a process sent the signal, it
// does not come again.
bool IsRepeated(int signal, const siginfo_t& info) {
    const bool byInstruction =
        signal == SIGSEGV || signal == SIGBUS || signal == SIGFPE || signal == SIGILL;
    return byInstruction && info.si_code > 0;
}

// Removes the folder and restores the former action of the signal. The signal then comes a second
// time, and the former action is executed.
extern "C" void OnFatalSignal(int signal, siginfo_t* info, void* /*context*/) {
    RemoveMendedFolder();
    for (std::size_t index = 0; index < kFatalSignals.size(); ++index)
        if (kFatalSignals[index] == signal) sigaction(signal, &formerActions[index], nullptr);
    if (!IsRepeated(signal, *info)) raise(signal);
}

void WatchSignals() {
    stack_t stack{};
    if (sigaltstack(nullptr, &stack) == 0 && (stack.ss_flags & SS_DISABLE) != 0) {
        stack = {};
        stack.ss_sp = handlerStack.data();
        stack.ss_size = handlerStack.size();
        sigaltstack(&stack, nullptr);
    }
    struct sigaction action {};
    action.sa_sigaction = OnFatalSignal;
    action.sa_flags = SA_ONSTACK | SA_SIGINFO;
    for (std::size_t index = 0; index < kFatalSignals.size(); ++index) {
        sigaction(kFatalSignals[index], nullptr, &formerActions[index]);
        // If the program handles or ignores a signal, its action is not replaced. The signals of
        // crashes are always handled here. OnFatalSignal removes the folder and restores their
        // former action, so that the program's own handler runs when the crash happens again.
        if (EndsTheProcess(formerActions[index]) || IsCrash(kFatalSignals[index]))
            sigaction(kFatalSignals[index], &action, nullptr);
    }
}

void StopWatchingSignals() {
    for (std::size_t index = 0; index < kFatalSignals.size(); ++index) {
        struct sigaction now {};
        sigaction(kFatalSignals[index], nullptr, &now);
        if ((now.sa_flags & SA_SIGINFO) != 0 && now.sa_sigaction == OnFatalSignal)
            sigaction(kFatalSignals[index], &formerActions[index], nullptr);
    }
}

}  // namespace

MendedFolderWatch::MendedFolderWatch() {
    WatchSignals();
}

MendedFolderWatch::~MendedFolderWatch() {
    StopWatchingSignals();
}

}  // namespace files
