#include "dataset/signal_watch.h"

#include <cerrno>
#include <sys/signalfd.h>
#include <system_error>
#include <unistd.h>

namespace dataset {
namespace {

bool IsIgnored(int signal) {
    struct sigaction action {};
    return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

SignalWatch::SignalWatch() {
    // The program that started this one may have set SIGCHLD to be ignored. waitpid would fail
    // then.
    std::signal(SIGCHLD, SIG_DFL);
    sigset_t watched;
    sigemptyset(&watched);
    sigaddset(&watched, SIGCHLD);
    for (const int stop : {SIGINT, SIGTERM, SIGHUP})
        if (!IsIgnored(stop)) sigaddset(&watched, stop);
    file_ = signalfd(-1, &watched, SFD_CLOEXEC | SFD_NONBLOCK);
    if (file_ < 0) throw std::system_error(errno, std::generic_category());
    sigprocmask(SIG_BLOCK, &watched, &previousMask_);
}

SignalWatch::~SignalWatch() {
    ReceiveStops();
    close(file_);
    sigprocmask(SIG_SETMASK, &previousMask_, nullptr);
}

int SignalWatch::ReceiveStops() const {
    int stops = 0;
    signalfd_siginfo signal{};
    while (read(file_, &signal, sizeof(signal)) == static_cast<ssize_t>(sizeof(signal)))
        if (signal.ssi_signo != SIGCHLD) ++stops;
    return stops;
}

}  // namespace dataset
