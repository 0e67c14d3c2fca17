// Imports side by side, each in a process of its own.
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

// How one of them ended.
struct ProcessEnd {
    pid_t id = -1;
    std::optional<int> exitStatus;  // none: it did not end by itself
    std::string trouble;            // then, why ("killed by SIGSEGV (Segmentation fault)")
    bool cancelled = false;         // it was asked to stop, and did
    std::string output;
    std::string errors;
};

class JobRunner {
  public:
    // `timeLimit`: of one process; none: as long as it takes.
    JobRunner(std::size_t parallel, std::optional<std::chrono::duration<double>> timeLimit);

    // Runs this program with each of `commands`, in order. `onEnd` gets the place in the list.
    // After a request to stop no further one is begun, and those that run are asked to stop; after
    // a second one, or some seconds, they are killed. Returns whether there was such a request;
    // what had not been begun then gets no onEnd.
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
    void TakeSignals();
    void TakeEnded();
    ProcessEnd EndOf(const Running& running) const;
    std::optional<Clock::time_point> NextDeadline() const;

    std::size_t parallel_;
    std::optional<std::chrono::duration<double>> timeLimit_;
    SignalWatch signals_;
    const std::vector<std::vector<std::string>>* commands_ = nullptr;
    const std::function<void(std::size_t, const ProcessEnd&)>* onEnd_ = nullptr;
    std::size_t next_ = 0;
    std::vector<Running> running_;
    std::optional<Clock::time_point> stopped_;
};

// Processors that this process may use.
std::size_t ProcessorCount();

}  // namespace dataset
