#include "dataset/job_runner.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <fmt/format.h>
#include <poll.h>
#include <sched.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>

#include "dataset/exit_status.h"

namespace dataset {
namespace {

// The time between SIGINT and SIGKILL. An import usually stops within a moment.
constexpr std::chrono::seconds kGracePeriod{5};
// If the system could not start a process while others run, the runner tries again after at most
// this time.
constexpr int kRetryMilliseconds = 50;

// Returns a text such as "killed by SIGSEGV (Segmentation fault)".
std::string SignalText(int signal) {
    const char* name = sigabbrev_np(signal);
    const char* description = sigdescr_np(signal);
    if (!name || !description) return fmt::format("killed by signal {}", signal);
    return fmt::format("killed by SIG{} ({})", name, description);
}

}  // namespace

JobRunner::JobRunner(std::size_t parallel, std::optional<std::chrono::duration<double>> timeLimit,
                     ImportStarter* starter)
    : parallel_(parallel), starter_(starter), timeLimit_(timeLimit) {}

bool JobRunner::Run(std::size_t count, const CommandOf& commandOf, const OnEnd& onEnd) {
    count_ = count;
    commandOf_ = &commandOf;
    onEnd_ = &onEnd;
    next_ = 0;
    stopped_ = std::nullopt;
    StartMore();
    while (!running_.empty()) {
        Wait();
        ReceiveSignals();
        CollectEnded();
        EnforceTimeLimit();
        StartMore();
    }
    return stopped_.has_value();
}

bool JobRunner::IsMoreToStart() const {
    return !stopped_ && next_ < count_ && running_.size() < parallel_;
}

void JobRunner::StartMore() {
    while (IsMoreToStart()) {
        const std::size_t index = next_;
        try {
            auto process = std::make_unique<ImportProcess>((*commandOf_)(index), starter_);
            running_.push_back({index, std::move(process), Clock::now()});
            ++next_;
        } catch (const std::system_error& error) {
            // The system may be able to start this process later, after a running process has
            // ended. If no process is running, the job has failed.
            if (!running_.empty()) return;
            ++next_;
            ProcessEnd end;
            end.trouble = fmt::format("cannot start a process: {}", error.code().message());
            (*onEnd_)(index, end);
        }
    }
}

void JobRunner::Wait() {
    std::vector<pollfd> files = {{signals_.File(), POLLIN, 0}};
    for (const Running& running : running_)
        for (const int file : {running.process->OutputFile(), running.process->ErrorFile()})
            files.push_back({file, POLLIN, 0});  // poll ignores negative descriptors
    int milliseconds = -1;
    if (const auto deadline = NextDeadline()) {
        const std::chrono::duration<double, std::milli> left = *deadline - Clock::now();
        milliseconds = static_cast<int>(std::clamp(std::ceil(left.count()), 0.0, 1e9));
    }
    if (IsMoreToStart()) milliseconds = kRetryMilliseconds;
    poll(files.data(), files.size(), milliseconds);
    for (const Running& running : running_)
        running.process->Read();
}

std::optional<JobRunner::Clock::time_point> JobRunner::NextDeadline() const {
    std::optional<Clock::time_point> next;
    if (stopped_) next = *stopped_ + kGracePeriod;
    if (!timeLimit_) return next;
    for (const Running& running : running_) {
        if (running.timedOut) continue;
        const auto deadline =
            running.start + std::chrono::duration_cast<Clock::duration>(*timeLimit_);
        if (!next || deadline < *next) next = deadline;
    }
    return next;
}

void JobRunner::ReceiveSignals() {
    const int stops = signals_.ReceiveStops();
    const bool wasStopped = stopped_.has_value();
    if (stops > 0) Stop();
    const bool graceIsOver = stopped_ && Clock::now() - *stopped_ >= kGracePeriod;
    if ((stops > 0 && wasStopped) || graceIsOver)
        for (const Running& running : running_)
            running.process->Kill();
}

void JobRunner::Stop() {
    if (stopped_) return;
    stopped_ = Clock::now();
    for (const Running& running : running_)
        running.process->Interrupt();
}

void JobRunner::EnforceTimeLimit() {
    if (!timeLimit_) return;
    for (Running& running : running_) {
        if (running.timedOut || Clock::now() - running.start < *timeLimit_) continue;
        running.timedOut = true;
        running.process->Kill();
    }
}

void JobRunner::CollectEnded() {
    for (auto running = running_.begin(); running != running_.end();) {
        if (!running->process->Reap()) {
            ++running;
            continue;
        }
        const Running ended = std::move(*running);
        running = running_.erase(running);
        (*onEnd_)(ended.index, EndOf(ended));
    }
}

ProcessEnd JobRunner::EndOf(const Running& running) const {
    ProcessEnd end;
    end.id = running.process->Id();
    end.output = running.process->Output();
    end.errors = running.process->Errors();
    const int status = running.process->WaitStatus();
    if (WIFEXITED(status)) end.exitStatus = WEXITSTATUS(status);
    if (running.timedOut && !end.exitStatus)
        end.trouble =
            fmt::format("stopped after the time limit of {} seconds", timeLimit_->count());
    else if (!end.exitStatus)
        end.trouble = SignalText(WTERMSIG(status));
    // A cancelled process may end with kCancelled or by a signal. SIGINT ends it if it has not set
    // its signal handler yet. ReceiveSignals may also have sent it SIGKILL.
    const int signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    end.cancelled = stopped_ && !running.timedOut &&
                    (end.exitStatus == kCancelled || signal == SIGINT || signal == SIGKILL);
    return end;
}

std::size_t ProcessorCount() {
    cpu_set_t allowed;
    if (sched_getaffinity(0, sizeof(allowed), &allowed) == 0)
        return static_cast<std::size_t>(std::max(CPU_COUNT(&allowed), 1));
    return std::max(std::thread::hardware_concurrency(), 1U);
}

}  // namespace dataset
