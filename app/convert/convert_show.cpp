#include "app/convert/convert_show.h"

#include <chrono>
#include <cstdlib>
#include <fmt/format.h>
#include <string_view>
#include <unistd.h>

#include "app/print.h"
#include "app/text.h"

namespace app {
namespace {

// Every change is shown: an import takes long enough.
constexpr std::chrono::milliseconds kInterval{0};

std::string Readable(const std::string& text) {
    return EncodeUtf8(EscapeControls(DecodeUtf8(text)));
}

bool CanRedrawLines() {
    const char* terminal = std::getenv("TERM");
    return isatty(STDERR_FILENO) != 0 && (!terminal || std::string_view(terminal) != "dumb");
}

headless::BarEvent Event(headless::BarEvent::Kind kind, std::size_t number) {
    return {kind, static_cast<std::int32_t>(number), {}};
}

}  // namespace

ConvertShow::ConvertShow(std::size_t total) : total_(total) {
    if (total == 0 || !CanRedrawLines()) return;
    bar_.emplace(TerminalColumns(STDERR_FILENO), kInterval, ToStderr());
    bar_->Take(Event(headless::BarEvent::Kind::Maximum, total));
    bar_->Take(Event(headless::BarEvent::Kind::Visible, 1));
}

void ConvertShow::Take(const IndexRow& row) {
    Count(row, converted_);
}

void ConvertShow::TakeKnown(const IndexRow& row) {
    Count(row, known_);
}

void ConvertShow::Count(const IndexRow& row, std::size_t& whenOk) {
    switch (row.status) {
        case JobStatus::Ok:
            ++whenOk;
            break;
        case JobStatus::Partial:
            ++partial_;
            break;
        case JobStatus::Failed:
            ++failed_;
            break;
        case JobStatus::Cancelled:
            return;
    }
    if (row.status != JobStatus::Ok) {
        if (bar_) bar_->Erase();
        ToStderr()(fmt::format("{}: {}\n", Readable(row.source), Readable(row.error)));
    }
    Draw();
}

void ConvertShow::Draw() {
    if (!bar_) return;
    const std::size_t done = converted_ + known_ + Failures();
    const std::string caption =
        Failures() == 0 ? fmt::format("{} of {} done", done, total_)
                        : fmt::format("{} of {} done, {} failed", done, total_, Failures());
    const std::wstring wide = DecodeUtf8(caption);
    bar_->Take(Event(headless::BarEvent::Kind::Value, done));
    bar_->Take({headless::BarEvent::Kind::Caption, 0, Zelk::CString(wide.c_str())});
}

std::string ConvertShow::ClosingLine(const std::string& index) {
    bar_.reset();
    std::string line = fmt::format("{} converted", converted_);
    const auto add = [&](std::size_t count, std::string_view what) {
        if (count > 0) line += fmt::format(", {} {}", count, what);
    };
    add(known_, "up to date");
    add(partial_, "in part");
    add(failed_, "failed");
    add(total_ - converted_ - known_ - Failures(), "cancelled: --resume goes on");
    return fmt::format("{}\n{}\n", line, Readable(index));
}

}  // namespace app
