#include "cli/log_printer.h"

#include <utility>

#include "headless/text.h"
#include "host/constants.h"
#include "take/outcome.h"
#include "text/escapes.h"
#include "text/wide_text.h"

namespace cli {

LogPrinter::LogPrinter(std::string skeleton, std::string motion, LogStyle style,
                       std::function<void(std::string_view)> print)
    : skeleton_(std::move(skeleton)),
      motion_(std::move(motion)),
      style_(style),
      print_(std::move(print)) {}

void LogPrinter::Print(const headless::LogLine& line) {
    const bool isMotion = subject_.IsMotion(line);
    if (IsShown(line)) {
        const std::string prefix = Prefix(isMotion);
        std::string text = prefix;
        if (style_.escapeControls) {
            // A message may have several lines. The prefix is put before each line.
            for (const char character :
                 text::EncodeUtf8(text::EscapeControls(headless::View(line.text), true))) {
                text += character;
                if (character == '\n') text += prefix;
            }
        } else {
            text += text::EncodeUtf8(headless::View(line.text));
        }
        print_(text + '\n');
    }
}

bool LogPrinter::IsShown(const headless::LogLine& line) const {
    return !style_.errorsOnly || take::IsError(line) || line.severity == Zelk::zkErrorSeverity ||
           line.severity == Zelk::zkWarningSeverity;
}

// Returns the path of the .amc file, if `isMotion` is true and there is such a file, or the path of
// the other file. A colon and a space follow the path. If the path is empty, the result is empty.
std::string LogPrinter::Prefix(bool isMotion) const {
    const std::string& file = isMotion && !motion_.empty() ? motion_ : skeleton_;
    if (file.empty()) return {};
    if (!style_.escapeControls) return file + ": ";
    return text::EscapeControls(file) + ": ";
}

}  // namespace cli
