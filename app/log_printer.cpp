#include "app/log_printer.h"

#include <utility>

#include "app/outcome.h"
#include "headless/text.h"
#include "host/constants.h"
#include "text/escapes.h"
#include "text/wide_text.h"

namespace app {

LogPrinter::LogPrinter(std::string skeleton, std::string motion, LogStyle style,
                       std::function<void(std::string_view)> print)
    : skeleton_(std::move(skeleton)),
      motion_(std::move(motion)),
      style_(style),
      print_(std::move(print)) {}

void LogPrinter::Print(const headless::LogLine& line) {
    if (IsShown(line)) {
        const std::string prefix = Prefix();
        std::string text = prefix;
        if (style_.escapeControls) {
            // A text of several lines stays one on a terminal too, each under the file's name.
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
    // A skeleton that was imported is followed by its documentation, an information; all that comes
    // after it is about the motion.
    if (line.severity == Zelk::zkInfoSeverity) skeletonDone_ = true;
}

bool LogPrinter::IsShown(const headless::LogLine& line) const {
    return !style_.errorsOnly || IsError(line) || line.severity == Zelk::zkErrorSeverity ||
           line.severity == Zelk::zkWarningSeverity;
}

std::string LogPrinter::Prefix() const {
    const std::string& file = skeletonDone_ && !motion_.empty() ? motion_ : skeleton_;
    if (file.empty()) return {};
    if (!style_.escapeControls) return file + ": ";
    return text::EscapeControls(file) + ": ";
}

}  // namespace app
