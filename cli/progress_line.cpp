#include "cli/progress_line.h"

#include <algorithm>
#include <cstdlib>
#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>
#include <utility>

#include "cli/columns.h"
#include "headless/text.h"
#include "text/escapes.h"
#include "text/wide_text.h"

namespace cli {
namespace {

constexpr int kBarColumns = 24;
constexpr int kPercentColumns = 4;  // "100%"
constexpr int kLeastCaption = 8;    // with fewer columns left, there is no caption
constexpr std::string_view kClearLine = "\r\x1b[K";

int Percentage(std::int64_t minimum, std::int64_t maximum, std::int64_t value) {
    if (maximum <= minimum) return 0;
    return static_cast<int>((std::clamp(value, minimum, maximum) - minimum) * 100 /
                            (maximum - minimum));
}

}  // namespace

ProgressLine::ProgressLine(int columns, std::chrono::milliseconds interval,
                           std::function<void(std::string_view)> print)
    : columns_(columns), interval_(interval), print_(std::move(print)) {}

ProgressLine::~ProgressLine() {
    Erase();
}

void ProgressLine::Receive(const headless::BarEvent& event) {
    using Kind = headless::BarEvent::Kind;
    switch (event.kind) {
        case Kind::Minimum:
            minimum_ = event.number;
            break;
        case Kind::Maximum:
            maximum_ = event.number;
            break;
        case Kind::Step:
            break;
        case Kind::Value:
            value_ = event.number;
            break;
        case Kind::Caption:
            caption_ = text::EscapeControls(headless::View(event.caption));
            break;
        case Kind::Visible:
            visible_ = event.number != 0;
            break;
    }
    if (visible_)
        Draw(Percentage(minimum_, maximum_, value_));
    else
        Erase();
}

void ProgressLine::Show(std::wstring_view caption, std::optional<double> share) {
    caption_ = text::EscapeControls(caption);
    std::optional<int> percentage;
    // A small number is added, because 0.29 * 100 is slightly less than 29.
    if (share) percentage = static_cast<int>(std::clamp(*share, 0.0, 1.0) * 100.0 + 1e-6);
    Draw(percentage);
}

void ProgressLine::Erase() {
    if (drawn_.empty()) return;
    print_(kClearLine);
    drawn_.clear();
}

void ProgressLine::Draw(std::optional<int> percentage) {
    const auto now = std::chrono::steady_clock::now();
    if (!drawn_.empty() && now - lastDrawn_ < interval_) return;
    std::string text = Text(percentage);
    if (text == drawn_) return;
    print_(std::string(kClearLine) + text);
    drawn_ = std::move(text);
    lastDrawn_ = now;
}

// Returns a text such as "Importing Motion...  [#########               ]  37%". On a narrow
// terminal the bar, or the bar and the caption, are left out. Without a percentage, only the
// caption is returned.
std::string ProgressLine::Text(std::optional<int> percentage) const {
    if (!percentage) return text::EncodeUtf8(Elide(caption_, std::max(columns_ - 1, 1)));
    // The last column stays free, because some terminals start a new line after a character in it.
    const int room = columns_ - 1 - kPercentColumns;
    // The bar with its two brackets, two spaces before it and one space after it.
    const int barRoom = kBarColumns + 5;
    if (room < kLeastCaption) return fmt::format("{:3}%", *percentage);
    if (room < kLeastCaption + barRoom)
        return fmt::format("{} {:3}%", text::EncodeUtf8(Elide(caption_, room - 1)), *percentage);
    const int filled = *percentage * kBarColumns / 100;
    return fmt::format("{}  [{:<{}}] {:3}%", text::EncodeUtf8(Elide(caption_, room - barRoom)),
                       std::string(static_cast<std::size_t>(filled), '#'), kBarColumns,
                       *percentage);
}

bool CanRedrawLines(int file) {
    const char* terminal = std::getenv("TERM");
    return isatty(file) != 0 && (!terminal || std::string_view(terminal) != "dumb");
}

int TerminalColumns(int file) {
    winsize size{};
    return ioctl(file, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

}  // namespace cli
