// Runs several imports at a time, each in its own process.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

#include "dataset/import_process.h"
#include "dataset/signal_watch.h"

namespace dataset {

// How one process ended.
struct ProcessEnd {
    pid_t id = -1;                  // its process id; -1 if it could not be started
    std::optional<int> exitStatus;  // nullopt if it was killed or could not be started
    std::string trouble;            // why there is no exit status; empty if there is one
    bool cancelled = false;         // the process ended because the run was stopped
    std::string output;             // the start of its standard output (see ImportProcess)
    std::string errors;             // the start of its standard error
};

class JobRunner {
  public:
    // `parallel` is how many processes may run at a time. A process that runs for longer than
    // `timeLimit` is killed. If `timeLimit` is nullopt, there is no limit.
    JobRunner(std::size_t parallel, std::optional<std::chrono::duration<double>> timeLimit);

    // Runs this program once for each element of `commands`, with the arguments in that element.
    // Starts the processes in the order of `commands`. When a process has ended or cannot be
    // started, calls `onEnd` with the index of its command. SIGINT, SIGTERM and SIGHUP ask to stop:
    // no further process is started, and the running processes get SIGINT. After a second signal,
    // or five seconds after the first signal, the running processes are killed. Returns whether
    // the run was stopped. `onEnd` is not called for a command that was not started because of
    // that.
    bool Run(const std::vector<std::vector<std::string>>& commands,
             const std::function<void(std::size_t, const ProcessEnd&)>& onEnd);

    // Has the effect of the first signal that asks to stop. `onEnd` may call it.
    void Stop();

  private:
    using Clock = std::chrono::steady_clock;
    struct Running {
        std::size_t index;  // the index of its command
        std::unique_ptr<ImportProcess> process;
        Clock::time_point start;
        bool timedOut = false;  // it was killed because of the time limit
    };

    void StartMore();
    // Waits for a signal, for output of a process, or for the next deadline.
    void Wait();
    void EnforceTimeLimit();
    void ReceiveSignals();
    void CollectEnded();
    ProcessEnd EndOf(const Running& running) const;
    std::optional<Clock::time_point> NextDeadline() const;

    std::size_t parallel_;
    std::optional<std::chrono::duration<double>> timeLimit_;
    SignalWatch signals_;
    // The arguments of Run, while it runs.
    const std::vector<std::vector<std::string>>* commands_ = nullptr;
    const std::function<void(std::size_t, const ProcessEnd&)>* onEnd_ = nullptr;
    std::size_t next_ = 0;  // the index of the next command to start
    std::vector<Running> running_;
    // The time when the run was stopped, by a signal or by Stop. nullopt: it was not stopped.
    std::optional<Clock::time_point> stopped_;
};

// Returns how many processors this process may use.
std::size_t ProcessorCount();

}  // namespace dataset
