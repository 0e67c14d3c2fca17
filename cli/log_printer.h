// The host's log as it appears on stderr.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "headless/session.h"
#include "take/outcome.h"

namespace cli {

struct LogStyle {
    bool escapeControls = false;  // for a terminal
    bool errorsOnly = false;      // errors and warnings
};

// Prints each line with the file it is about before it, as compilers do: "walk.bvh: message".
class LogPrinter {
  public:
    // `skeleton` and `motion` are the files as the user named them, either may be empty; with no
    // file the lines stand alone. `print` takes whole lines.
    LogPrinter(std::string skeleton, std::string motion, LogStyle style,
               std::function<void(std::string_view)> print);

    void Print(const headless::LogLine& line);

  private:
    bool IsShown(const headless::LogLine& line) const;
    std::string Prefix(bool isMotion) const;

    std::string skeleton_;
    std::string motion_;
    LogStyle style_;
    std::function<void(std::string_view)> print_;
    take::LogSubject subject_;
};

}  // namespace cli
