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

// To stop an import is a matter of moments.
constexpr std::chrono::seconds kPatience{5};
// Until it is tried again to start a process where none could be made.
constexpr int kRetryMilliseconds = 50;

std::string SignalText(int signal) {
    const char* name = sigabbrev_np(signal);
    const char* description = sigdescr_np(signal);
    if (!name || !description) return fmt::format("killed by signal {}", signal);
    return fmt::format("killed by SIG{} ({})", name, description);
}

}  // namespace

JobRunner::JobRunner(std::size_t parallel, std::optional<std::chrono::duration<double>> timeLimit)
    : parallel_(parallel), timeLimit_(timeLimit) {}

bool JobRunner::Run(const std::vector<std::vector<std::string>>& commands,
                    const std::function<void(std::size_t, const ProcessEnd&)>& onEnd) {
    commands_ = &commands;
    onEnd_ = &onEnd;
    next_ = 0;
    stopped_ = std::nullopt;
    StartMore();
    while (!running_.empty()) {
        Wait();
        TakeSignals();
        TakeEnded();
        EnforceTimeLimit();
        StartMore();
    }
    return stopped_.has_value();
}

void JobRunner::StartMore() {
    while (!stopped_ && next_ < commands_->size() && running_.size() < parallel_) {
        const std::size_t index = next_;
        try {
            auto process = std::make_unique<ImportProcess>((*commands_)[index]);
            running_.push_back({index, std::move(process), Clock::now()});
            ++next_;
        } catch (const std::system_error& error) {
            // One that ends may make room.
            if (!running_.empty()) return;
            ++next_;
            ProcessEnd end;
            end.trouble = fmt::format("no process for it: {}", error.code().message());
            (*onEnd_)(index, end);
        }
    }
}

void JobRunner::Wait() {
    std::vector<pollfd> files = {{signals_.File(), POLLIN, 0}};
    for (const Running& running : running_)
        for (const int file : {running.process->OutputFile(), running.process->ErrorFile()})
            files.push_back({file, POLLIN, 0});  // poll passes over what is below 0
    int milliseconds = -1;
    if (const auto deadline = NextDeadline()) {
        const std::chrono::duration<double, std::milli> left = *deadline - Clock::now();
        milliseconds = static_cast<int>(std::clamp(std::ceil(left.count()), 0.0, 1e9));
    }
    const bool startLater = !stopped_ && next_ < commands_->size() && running_.size() < parallel_;
    if (startLater) milliseconds = kRetryMilliseconds;
    poll(files.data(), files.size(), milliseconds);
    for (const Running& running : running_)
        running.process->Read();
}

std::optional<JobRunner::Clock::time_point> JobRunner::NextDeadline() const {
    std::optional<Clock::time_point> next;
    if (stopped_) next = *stopped_ + kPatience;
    if (!timeLimit_) return next;
    for (const Running& running : running_) {
        if (running.timedOut) continue;
        const auto deadline =
            running.start + std::chrono::duration_cast<Clock::duration>(*timeLimit_);
        if (!next || deadline < *next) next = deadline;
    }
    return next;
}

void JobRunner::TakeSignals() {
    const int stops = signals_.TakeStops();
    const bool wasStopped = stopped_.has_value();
    if (stops > 0 && !wasStopped) {
        stopped_ = Clock::now();
        for (const Running& running : running_)
            running.process->Interrupt();
    }
    const bool outOfPatience = stopped_ && Clock::now() - *stopped_ >= kPatience;
    if ((stops > 0 && wasStopped) || outOfPatience)
        for (const Running& running : running_)
            running.process->Kill();
}

void JobRunner::EnforceTimeLimit() {
    if (!timeLimit_) return;
    for (Running& running : running_) {
        if (running.timedOut || Clock::now() - running.start < *timeLimit_) continue;
        running.timedOut = true;
        running.process->Kill();
    }
}

void JobRunner::TakeEnded() {
    for (std::size_t place = 0; place < running_.size();) {
        if (!running_[place].process->Reap()) {
            ++place;
            continue;
        }
        const Running ended = std::move(running_[place]);
        running_.erase(running_.begin() + static_cast<std::ptrdiff_t>(place));
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
        end.trouble = fmt::format("stopped: not done after {} seconds", timeLimit_->count());
    else if (!end.exitStatus)
        end.trouble = SignalText(WTERMSIG(status));
    // Asked very early or a second time, it dies of the signal itself.
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
