#include "files/mended_watch.h"

#include <array>
#include <csignal>
#include <cstddef>

#include "files/mended_folder.h"

namespace files {
namespace {

// The signals that end a process if nothing handles them: those of crashes, and others.
constexpr std::array kFatalSignals = {SIGSEGV, SIGBUS,  SIGFPE,  SIGILL,  SIGABRT,
                                      SIGSYS,  SIGQUIT, SIGPIPE, SIGALRM, SIGTERM,
                                      SIGHUP,  SIGINT,  SIGXCPU, SIGUSR1, SIGUSR2};
std::array<struct sigaction, kFatalSignals.size()> formerActions;

// The handler has its own stack, because a full stack may be the reason for the crash.
std::array<char, 65536> handlerStack;

// Whether the signal ends the process: it has the default action.
bool EndsTheProcess(const struct sigaction& action) {
    return (action.sa_flags & SA_SIGINFO) == 0 && action.sa_handler == SIG_DFL;
}

bool IsCrash(int signal) {
    return signal == SIGSEGV || signal == SIGBUS || signal == SIGFPE || signal == SIGILL ||
           signal == SIGABRT || signal == SIGSYS;
}

// Removes the folder and restores the former action of the signal. Then the crash happens once
// more, because the same instruction is executed again; any other signal is raised again.
extern "C" void OnFatalSignal(int signal) {
    RemoveMendedFolder();
    for (std::size_t index = 0; index < kFatalSignals.size(); ++index)
        if (kFatalSignals[index] == signal) sigaction(signal, &formerActions[index], nullptr);
    if (!IsCrash(signal) || signal == SIGABRT) raise(signal);
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
    action.sa_handler = OnFatalSignal;
    action.sa_flags = SA_ONSTACK;
    for (std::size_t index = 0; index < kFatalSignals.size(); ++index) {
        sigaction(kFatalSignals[index], nullptr, &formerActions[index]);
        // A signal that the program handles or ignores is left alone. The signals of crashes are
        // always watched; OnFatalSignal restores their former action after it removed the folder.
        if (EndsTheProcess(formerActions[index]) || IsCrash(kFatalSignals[index]))
            sigaction(kFatalSignals[index], &action, nullptr);
    }
}

void StopWatchingSignals() {
    for (std::size_t index = 0; index < kFatalSignals.size(); ++index) {
        struct sigaction now {};
        sigaction(kFatalSignals[index], nullptr, &now);
        if ((now.sa_flags & SA_SIGINFO) == 0 && now.sa_handler == OnFatalSignal)
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
