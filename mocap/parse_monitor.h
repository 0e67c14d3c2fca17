#pragma once

#include <string>

// A parser calls these functions while it runs, to report its progress and to ask whether it should
// stop. An importer overrides them to use the host's progress bar and log. The functions of this
// base class never cancel, and ignore all reports.
class ParseMonitor {
  public:
    virtual ~ParseMonitor() = default;

    // Returns whether the user cancelled. If so, the parser fails with "User cancelled command".
    virtual bool IsCancelled() { return false; }
    // Whether anybody notices calls of IsCancelled. If not, the parser may leave them out.
    virtual bool IsPolled() { return true; }
    // Asks the monitor to advance the progress bar by `steps`.
    virtual void Advance(unsigned int /*steps*/) {}
    // The BVH parser calls this before it parses the values of the motion. At this time it knows
    // the channels and the number of frames.
    virtual void BeginValues() {}
    // The parser ignores something in the file and goes on. `message` says what it ignores.
    virtual void Warn(const std::wstring& /*message*/) {}
};
