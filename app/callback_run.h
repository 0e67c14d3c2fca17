// One call of the plug-in's callback, as it appears to the person before the terminal.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "app/arguments.h"
#include "app/log_printer.h"
#include "app/plugin_library.h"
#include "app/variant_list.h"
#include "headless/session.h"

namespace app {

// How a log line is shown and kept.
using LogFilter = std::function<headless::LogLine(const headless::LogLine&)>;

struct CallbackShow {
    Progress progress = Progress::Auto;
    bool drawBar = true;  // where it can be
    bool errorsOnly = false;
    // Before each log line; both empty: nothing.
    std::string file;
    std::string motionFile;
    LogFilter filter;  // none: as the plug-in wrote it
};

struct CallbackResult {
    std::int32_t code = 0;
    double milliseconds = 0.0;  // inside the callback
    std::vector<headless::LogLine> log;
};

// Makes the session new and calls the plug-in; the log goes to stderr as it is written, the bar is
// drawn there where stderr is a terminal, and Ctrl-C asks the plug-in to stop.
CallbackResult RunCallback(const PluginLibrary& plugin, const std::wstring& name,
                           const VariantList& arguments, const CallbackShow& show);

}  // namespace app
