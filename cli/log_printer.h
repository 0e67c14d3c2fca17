// Prints the host's log.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "headless/session.h"
#include "take/outcome.h"

namespace cli {

struct LogStyle {
    // Replace control characters by escapes, because a terminal would obey them.
    bool escapeControls = false;
    bool errorsOnly = false;  // print only errors and warnings
};

// Prints each log line with the path of its file before it, as compilers do: "walk.bvh: message".
class LogPrinter {
  public:
    // `skeleton` is the path of the .bvh or .asf file. `motion` is the path of the .amc file. The
    // user wrote these paths. If `motion` is empty, `skeleton` is printed before all lines. If both
    // are empty, lines are printed without a path. Each call of `print` gets a whole message.
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
