// Imports one take while the user watches.
#pragma once

#include "cli/arguments.h"
#include "take/import.h"
#include "take/request.h"

namespace cli {

struct TakeRun {
    take::Request take;  // the request's, with the bytes of the standard input, if it is a file
    take::Result result;
    bool drawsBar = false;          // whether a bar was drawn on stderr
    double loadMilliseconds = 0.0;  // how long the import took
};

// Loads the plug-in and runs the import, prints its log and findings to stderr and, on a terminal,
// draws a bar there. Afterwards a first signal only makes Interrupted() return true. Throws
// PluginError, and std::runtime_error if the standard input cannot be read.
TakeRun RunTake(const ImportRequest& request);

}  // namespace cli
