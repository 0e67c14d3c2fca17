// The embedded host, as an application or a test uses it. A process has one session, with a scene,
// a log, a progress bar and a list of the commands that were run. Reset empties the session;
// Release moves its contents out to the caller. Use the session from one thread at a time; only
// PressCancel may be called from any thread, or from a signal handler.
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
    std::optional<std::int32_t> severity;  // a Zelk::zkSeverityType; empty: the host's default
    Zelk::CString text;
};

struct BarEvent {
    enum class Kind : std::uint8_t { Minimum, Maximum, Step, Value, Caption, Visible };
    Kind kind = Kind::Value;
    std::int32_t number = 0;  // the new value; for Visible 0 or 1, for Caption unused
    Zelk::CString caption;    // for Caption only
};

struct CommandRecord {
    // A reference is recorded as the full name that its target had before the command ran. An empty
    // value, and a reference to nothing, is recorded as std::monostate.
    using Argument = std::variant<std::monostate, std::int32_t, double, Zelk::CString>;
    Zelk::CString name;
    std::vector<Argument> arguments;  // empty if memory ran out while they were recorded
    std::int32_t status = 0;          // a code of host/status.h
};

// Everything that a session held, moved out of it and owned by the caller. It does not refer to the
// session, so it stays valid after a Reset or another import, and any number of recordings may
// exist at the same time. Several threads may read a recording at once; any thread may destroy it
// when no thread reads it any more.
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

    // Empties the scene, the log, the bar and the commands, removes the listeners, undoes a pressed
    // cancel button and makes the session non-interactive. New objects get ids that were never used
    // before. When memory runs out, std::bad_alloc is thrown and nothing has changed. Do not call
    // Reset or Release from a listener, nor while a command of the plug-in runs.
    void Reset();
    // Moves the scene, the log, the bar and the commands out, in a time that does not depend on
    // their size. GetScene() then returns a new, empty scene, whose ids follow the old ids.
    // The objects and records of the released scene keep their addresses. Handles (see host/) to
    // its objects become invalid. Only a handle to the scene root stays valid; it then refers to
    // the root of the new scene. Release does not change the listeners, the cancel button, or
    // whether the session is interactive. When memory runs out, std::bad_alloc is thrown and
    // nothing has changed.
    Recording Release();

    // Only an interactive session has a progress bar. A new session is not interactive.
    void SetInteractive(bool interactive);
    // Presses the bar's cancel button, which stays pressed until Reset. May be called from a signal
    // handler.
    void PressCancel() noexcept;

    // `isCancelled` is called each time the plug-in reads the bar's cancel button, on the importing
    // thread, until the button is pressed. When `isCancelled` returns true, the button is pressed
    // as by PressCancel. A session that is not interactive has no bar, so it never calls
    // `isCancelled`. `isCancelled` must not throw, nor call OnCancelPoll. An empty `isCancelled`
    // removes the one that was set before.
    void OnCancelPoll(std::function<bool()> isCancelled);

    // `listener` is called with each log line or bar event after it was recorded. It must not
    // throw, nor replace itself. An empty `listener` removes the one that was set before.
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
