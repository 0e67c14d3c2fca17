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
    headless::Recording recording;  // the scene and what happened
    USERINPUT userInput;            // what the plug-in recorded of its arguments
};

// Makes the host's session new, calls the plug-in and moves out what it made. The listener's onLog
// and onBar are called as things happen; isCancelled presses the bar's button.
CallResult Call(const SessionLock& lock, const Plugin& plugin, const std::wstring& name,
                const VariantList& arguments, bool hasProgressBar, const Listener& listener);

}  // namespace take
