// Prints the host's log to stderr.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "headless/session.h"
#include "take/outcome.h"

namespace cli {

struct LogStyle {
    bool escapeControls = false;  // replace control characters, which a terminal would obey
    bool errorsOnly = false;      // print only errors and warnings
};

// Prints each line with the name of its file before it, as compilers do: "walk.bvh: message".
class LogPrinter {
  public:
    // `skeleton` and `motion` are the files as the user named them. Without a motion all lines are
    // about the skeleton; with both empty, lines are printed without a name. `print` gets whole
    // lines.
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
