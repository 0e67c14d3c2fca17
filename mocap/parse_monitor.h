#pragma once

#include <string>

// What a parser asks and reports while it runs. An importer passes it on to the host's progress bar
// and log. As it is, this class never cancels and ignores all reports.
class ParseMonitor {
  public:
    virtual ~ParseMonitor() = default;

    // Whether the user wants to stop. The parser then fails with "User cancelled command".
    virtual bool IsCancelled() { return false; }
    // The progress bar should advance by `steps`.
    virtual void Advance(unsigned int /*steps*/) {}
    // The channels and the number of frames are known; their values are parsed next.
    virtual void BeginValues() {}
    // Something in the file was ignored, and the parser goes on.
    virtual void Warn(const std::wstring& /*message*/) {}
};
