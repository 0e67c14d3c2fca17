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
    pid_t id = -1;
    std::optional<int> exitStatus;  // none: it was killed, or could not be started
    std::string trouble;            // why there is no exit status; empty where there is one
    bool cancelled = false;         // the user asked to stop, and it stopped
    std::string output;
    std::string errors;
};

class JobRunner {
  public:
    // `timeLimit` is that of one process; none: a process may run for any time.
    JobRunner(std::size_t parallel, std::optional<std::chrono::duration<double>> timeLimit);

    // Runs this program once for each element of `commands`, which are its arguments. Processes are
    // started in order; `onEnd` gets the command's index as each one ends. After SIGINT, SIGTERM or
    // SIGHUP no further process is started and the running ones get SIGINT; after a second signal,
    // or five seconds later, they are killed. Returns whether there was such a signal. `onEnd` is
    // not called for commands that were not started.
    bool Run(const std::vector<std::vector<std::string>>& commands,
             const std::function<void(std::size_t, const ProcessEnd&)>& onEnd);

  private:
    using Clock = std::chrono::steady_clock;
    struct Running {
        std::size_t index;
        std::unique_ptr<ImportProcess> process;
        Clock::time_point start;
        bool timedOut = false;
    };

    void StartMore();
    void Wait();
    void EnforceTimeLimit();
    void ReceiveSignals();
    void CollectEnded();
    ProcessEnd EndOf(const Running& running) const;
    std::optional<Clock::time_point> NextDeadline() const;

    std::size_t parallel_;
    std::optional<std::chrono::duration<double>> timeLimit_;
    SignalWatch signals_;
    const std::vector<std::vector<std::string>>* commands_ = nullptr;
    const std::function<void(std::size_t, const ProcessEnd&)>* onEnd_ = nullptr;
    std::size_t next_ = 0;  // the index of the next command to start
    std::vector<Running> running_;
    std::optional<Clock::time_point> stopped_;  // when the user first asked to stop
};

// Returns how many processors this process may use.
std::size_t ProcessorCount();

}  // namespace dataset
