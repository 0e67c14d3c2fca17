// The data of the session, for the sources of this folder.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <vector>

#include "headless/scene_editor.h"
#include "headless/session.h"

namespace headless {

struct HEADLESS_HIDDEN Session::Impl {
    Scene scene;
    std::vector<LogLine> log;
    std::vector<BarEvent> bar;
    std::vector<CommandRecord> commands;
    std::function<void(const LogLine&)> onLog;
    std::function<void(const BarEvent&)> onBar;
    std::function<bool()> onCancelPoll;
    bool interactive = false;
    std::atomic<bool> pressed = false;
    std::uint64_t pressAtPoll = 0;   // the button reads as pressed from this poll on; 0: never
    std::uint64_t polls = 0;         // since the last Reset
    std::int16_t pressedValue = -1;  // what a pressed button reads as

    void AddLog(LogLine line);
    void AddBar(BarEvent event);
    // Returns `pressedValue` or 0, and counts as a poll.
    std::int16_t ReadCancelFlag();
};

static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler presses the button");

struct SessionAccess {
    static Session::Impl& Current();
};

inline SceneEditor Editor() {
    return SceneEditor(SessionAccess::Current().scene);
}

}  // namespace headless
