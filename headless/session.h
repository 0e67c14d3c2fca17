// The embedded host as an application or a test holds it: one session at a time, its scene, its
// log, its progress bar and the commands that were run. Reset makes it new.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

#include "headless/scene.h"
#include "host/export.h"
#include "host/string.h"

namespace headless {

struct LogLine {
    std::optional<std::int32_t> severity;  // none: the host's default
    Zelk::CString text;
};

struct BarEvent {
    enum class Kind : std::uint8_t { Minimum, Maximum, Step, Value, Caption, Visible };
    Kind kind = Kind::Value;
    std::int32_t number = 0;  // of Visible: 0 or 1
    Zelk::CString caption;
};

struct CommandRecord {
    // Empty values are monostate, references the full name they had when the command was run (an
    // empty reference is monostate too).
    using Argument = std::variant<std::monostate, std::int32_t, double, Zelk::CString>;
    Zelk::CString name;
    std::vector<Argument> arguments;
    std::int32_t status = 0;
};

class ZELK_API Session {
  public:
    // The one session of this process.
    static Session& Current();

    // Empties scene, log, bar and commands; forgets faults and listeners; non-interactive.
    void Reset();

    // Only an interactive session has a progress bar. Off at the start.
    void SetInteractive(bool interactive);
    // Presses the bar's cancel button, for good. Callable from a signal handler.
    void PressCancel() noexcept;
    // For tests: the button reads as pressed from the n-th poll on (counted from 1; 0: never).
    void PressCancelAtPoll(std::uint64_t poll);
    // For tests: what the cancel flag reads when pressed (automation true, -1, otherwise).
    void SetPressedValue(std::int16_t value);
    std::uint64_t CancelPolls() const;

    // Called with each log line and bar event as it happens.
    void OnLog(std::function<void(const LogLine&)> listener);
    void OnBar(std::function<void(const BarEvent&)> listener);

    const Scene& GetScene() const;
    const std::vector<LogLine>& Log() const;
    const std::vector<BarEvent>& Bar() const;
    const std::vector<CommandRecord>& Commands() const;

  private:
    Session();
    ~Session();
    friend struct SessionAccess;
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace headless
