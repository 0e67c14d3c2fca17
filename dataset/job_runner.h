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
    using CommandOf = std::function<std::vector<std::string>(std::size_t)>;
    using OnEnd = std::function<void(std::size_t, const ProcessEnd&)>;

    // `parallel` is how many processes may run at a time. `starter` starts them; if it is null,
    // this program is started anew for each of them. It has to outlive this object. A process that
    // runs for longer than `timeLimit` is killed. If `timeLimit` is nullopt, there is no limit.
    JobRunner(std::size_t parallel, std::optional<std::chrono::duration<double>> timeLimit,
              ImportStarter* starter);

    // Runs `count` imports, in their order. Import n gets the arguments that `commandOf(n)`
    // returns. When its process has ended or cannot be started, calls `onEnd(n, ...)`. The time
    // that an import takes in this process does not depend on `count`. SIGINT, SIGTERM and SIGHUP
    // ask to stop: no further process is started, and the running processes get SIGINT. After a
    // second signal, or five seconds after the first signal, the running processes are killed.
    // Returns whether the run was stopped. `onEnd` is not called for an import that was not started
    // because of that.
    bool Run(std::size_t count, const CommandOf& commandOf, const OnEnd& onEnd);

    // Has the effect of the first signal that asks to stop. `onEnd` may call it.
    void Stop();

  private:
    using Clock = std::chrono::steady_clock;
    struct Running {
        std::size_t index;  // the index of its import
        std::unique_ptr<ImportProcess> process;
        Clock::time_point start;
        bool timedOut = false;  // it was killed because of the time limit
    };

    void StartMore();
    bool IsMoreToStart() const;
    // Waits for a signal, for output of a process, or for the next deadline.
    void Wait();
    void EnforceTimeLimit();
    void ReceiveSignals();
    void CollectEnded();
    ProcessEnd EndOf(const Running& running) const;
    std::optional<Clock::time_point> NextDeadline() const;

    std::size_t parallel_;
    ImportStarter* starter_;
    std::optional<std::chrono::duration<double>> timeLimit_;
    SignalWatch signals_;
    // The arguments of Run, while it runs.
    std::size_t count_ = 0;
    const CommandOf* commandOf_ = nullptr;
    const OnEnd* onEnd_ = nullptr;
    std::size_t next_ = 0;  // the index of the next import to start
    std::vector<Running> running_;
    // The time when the run was stopped, by a signal or by Stop. nullopt: it was not stopped.
    std::optional<Clock::time_point> stopped_;
};

// Returns how many processors this process may use.
std::size_t ProcessorCount();

}  // namespace dataset
