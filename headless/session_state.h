// The data of the session. Only files of the folder headless/ include this header.
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
    // From the poll with this number on, the cancel button counts as pressed. The first poll has
    // the number 1. 0 means that there is no such poll.
    std::uint64_t pressAtPoll = 0;
    std::uint64_t polls = 0;         // how often the button was read since the last Reset
    std::int16_t pressedValue = -1;  // what ReadCancelFlag returns for a pressed button

    void AddLog(LogLine line);
    void AddBar(BarEvent event);
    // Returns `pressedValue` if the cancel button is pressed, and 0 if not. Each call is one poll.
    std::int16_t ReadCancelFlag();
};

static_assert(std::atomic<bool>::is_always_lock_free,
              "a signal handler may press the button, so no lock is allowed");

struct SessionAccess {
    static Session::Impl& Current();
};

inline SceneEditor Editor() {
    return SceneEditor(SessionAccess::Current().scene);
}

}  // namespace headless
