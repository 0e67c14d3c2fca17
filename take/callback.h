// One call of the plug-in's callback.
#pragma once

#include <cstdint>
#include <string>

#include "headless/session.h"
#include "plugin/user_input.h"
#include "take/listener.h"
#include "take/plugin_library.h"
#include "take/session_lock.h"
#include "take/variant_list.h"

namespace take {

struct CallResult {
    std::int32_t code = 0;          // what the callback returned
    headless::Recording recording;  // the scene, the log, the bar events and the commands
    USERINPUT userInput;            // the plug-in's record of the arguments
};

// Resets the host's session, calls the plug-in, and moves everything that the call made out of the
// session. During the call the listener's onLog receives each log line, and its onBar each event of
// the progress bar. If the listener's isCancelled returns true, the session presses the bar's
// cancel button.
CallResult Call(const SessionLock& lock, const Plugin& plugin, const std::wstring& name,
                const VariantList& arguments, bool hasProgressBar, const Listener& listener);

}  // namespace take
