// The embedded host as an application or a test holds it: one session at a time, its scene, its
// log, its progress bar and the commands that were run. Reset makes it new; Release moves out what
// it holds. The session is used from one thread at a time; what was released belongs to the caller.
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

// Everything that a session held, moved out of it and owned by the caller. It does not refer to the
// session, so that it outlives any Reset or import, and any number of recordings may exist side by
// side. Several threads may read one at once; any thread may destroy it when nobody reads it.
struct Recording {
    std::unique_ptr<const Scene> scene;  // never null
    std::vector<LogLine> log;
    std::vector<BarEvent> bar;
    std::vector<CommandRecord> commands;
};

class ZELK_API Session {
  public:
    // The one session of this process.
    static Session& Current();

    // Empties scene, log, bar and commands; forgets faults and listeners; non-interactive.
    void Reset();
    // Moves out scene, log, bar and commands; costs the same however large they are. The session
    // then has an empty scene, whose ids go on from where they were, and GetScene() returns it.
    // Objects and the records of the released scene stay where they are in memory. Handles (host/)
    // to its objects become invalid: they do not find anything in the new scene. A handle of the
    // scene root refers to the new scene's root. Everything else stays as it is: listeners,
    // interactivity, a pressed button. Without memory it throws std::bad_alloc and changes nothing.
    // Neither Reset nor Release may be called by a listener, nor while a command of the plug-in
    // runs.
    Recording Release();

    // Only an interactive session has a progress bar. Off at the start.
    void SetInteractive(bool interactive);
    // Presses the bar's cancel button, for good. Callable from a signal handler.
    void PressCancel() noexcept;

    // Asked on the importing thread each time the plug-in reads the bar's cancel button, until the
    // button is pressed: true presses it for good, as PressCancel does. It is never asked in a
    // session that is not interactive, which has no bar. It must not throw, nor replace itself.
    // Null removes it.
    void OnCancelPoll(std::function<bool()> isCancelled);

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
