#include "cli/convert_show.h"

#include <chrono>
#include <cstdlib>
#include <fmt/format.h>
#include <sstream>
#include <string_view>
#include <unistd.h>

#include "cli/print.h"
#include "text/escapes.h"
#include "text/wide_text.h"

namespace cli {
namespace {

// There is no minimum time between two drawings of the bar. Imports end so seldom that drawing the
// bar after each import takes little time.
constexpr std::chrono::milliseconds kInterval{0};

std::string Readable(const std::string& text) {
    return text::EscapeControls(text);
}

// Escapes control characters other than line feeds.
std::string ReadableLines(const std::string& text) {
    return text::EscapeControls(text, true);
}

bool CanRedrawLines() {
    const char* terminal = std::getenv("TERM");
    return isatty(STDERR_FILENO) != 0 && (!terminal || std::string_view(terminal) != "dumb");
}

headless::BarEvent Event(headless::BarEvent::Kind kind, std::size_t number) {
    return {kind, static_cast<std::int32_t>(number), {}};
}

}  // namespace

ConvertShow::ConvertShow(std::size_t total) {
    counts_.total = total;
    if (total == 0 || !CanRedrawLines()) return;
    bar_.emplace(TerminalColumns(STDERR_FILENO), kInterval, ToStderr());
    bar_->Receive(Event(headless::BarEvent::Kind::Maximum, total));
    Draw();
    bar_->Receive(Event(headless::BarEvent::Kind::Visible, 1));
}

void ConvertShow::RecordConverted(const dataset::IndexRow& row,
                                  const dataset::JobDetails& details) {
    Record(row, details, counts_.converted);
}

void ConvertShow::RecordNotConverted(const dataset::IndexRow& row,
                                     const dataset::JobDetails& details) {
    Record(row, details, counts_.upToDate);
}

void ConvertShow::PrintMessage(std::string_view message) {
    if (bar_) bar_->Erase();
    PrintError(message);
}

void ConvertShow::Record(const dataset::IndexRow& row, const dataset::JobDetails& details,
                         std::size_t& okCount) {
    switch (row.status) {
        case dataset::JobStatus::Ok:
            ++okCount;
            break;
        case dataset::JobStatus::Partial:
            ++counts_.partial;
            break;
        case dataset::JobStatus::Failed:
            ++counts_.failed;
            break;
        case dataset::JobStatus::Cancelled:
            return;
    }
    if (details.wasRun) ++counts_.imports;
    counts_.loadMilliseconds += details.loadMilliseconds;
    counts_.hashMilliseconds += details.hashMilliseconds;
    counts_.writeMilliseconds += details.writeMilliseconds;
    std::istringstream codes(row.findings);
    for (std::string code; codes >> code;)
        ++counts_.filesByCode[code];
    std::string lines = ReadableLines(details.findings);
    // A full disk is reported once, by PrintProblems.
    if (row.status != dataset::JobStatus::Ok && !details.refused && !details.diskIsFull)
        lines += fmt::format("{}: {}\n", Readable(row.source), Readable(row.error));
    if (bar_ && !lines.empty()) bar_->Erase();
    ToStderr()(lines);
    Draw();
}

void ConvertShow::Draw() {
    if (!bar_) return;
    const std::size_t done = counts_.Done();
    const std::string caption =
        Failures() == 0 ? fmt::format("{} of {} done", done, counts_.total)
                        : fmt::format("{} of {} done, {} failed", done, counts_.total, Failures());
    const std::wstring wide = text::DecodeUtf8(caption);
    bar_->Receive(Event(headless::BarEvent::Kind::Value, done));
    bar_->Receive({headless::BarEvent::Kind::Caption, 0, Zelk::CString(wide.c_str())});
}

void ConvertShow::PrintProblems(const dataset::RunEnd& end) {
    bar_.reset();
    if (end.isDiskFull) {
        PrintError(
            fmt::format("the disk is full: {} of {} sources were converted{}; --resume "
                        "continues",
                        counts_.converted + counts_.upToDate + counts_.partial, counts_.total,
                        end.index.empty() ? ", and the index could not be written" : ""));
        return;
    }
    for (const std::string& problem : end.problems)
        PrintError(problem);
}

std::string ConvertShow::Summary(const dataset::RunEnd& end, bool timing) {
    bar_.reset();
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start_;
    return ConvertSummary(counts_, end, took.count(), timing);
}

}  // namespace cli
