#include "cli/import_show.h"

#include <chrono>
#include <cstdlib>
#include <string_view>
#include <unistd.h>

#include "cli/print.h"
#include "survey/finding_text.h"

namespace cli {
namespace {

constexpr std::chrono::milliseconds kBarInterval{50};

bool CanRedrawLines() {
    const char* terminal = std::getenv("TERM");
    return !terminal || std::string_view(terminal) != "dumb";
}

}  // namespace

ImportShow::ImportShow(const ShowOptions& options)
    : options_(options),
      isTerminal_(isatty(STDERR_FILENO) != 0),
      hasProgressBar_(options.progress == Progress::On ||
                      (options.progress == Progress::Auto && isTerminal_)),
      log_(options.file, options.motionFile, {isTerminal_, options.errorsOnly}, ToStderr()) {
    CatchInterrupts();
    // The survey cannot be cancelled. Therefore a signal during the survey ends the process.
    exitOnInterrupt_.emplace();
}

take::Listener ImportShow::BuildListener() {
    take::Listener listener;
    listener.onSurveyed = [this](const auto& findings, bool isRefused) {
        exitOnInterrupt_.reset();
        if (options_.showFindings) ShowFindings(findings);
        if (!isRefused) BeginCall();
    };
    listener.onLog = [this](const headless::LogLine& line) {
        if (bar_) bar_->Erase();
        log_.Print(line);
    };
    listener.onBar = [this](const headless::BarEvent& event) {
        if (bar_) bar_->Receive(event);
    };
    listener.isCancelled = Interrupted;
    return listener;
}

void ImportShow::BeginCall() {
    exitOnInterrupt_.reset();
    if (!hasProgressBar_) exitOnInterrupt_.emplace();
    if (hasProgressBar_ && isTerminal_ && options_.drawBar && CanRedrawLines())
        bar_.emplace(TerminalColumns(STDERR_FILENO), kBarInterval, ToStderr());
}

void ImportShow::EndCall() {
    exitOnInterrupt_.reset();
    bar_.reset();
}

void ImportShow::ShowFindings(const std::vector<take::FileFindings>& findings) const {
    for (const take::FileFindings& file : findings)
        for (const survey::Finding& finding : file.findings)
            if (!options_.errorsOnly || finding.severity != survey::Severity::Note)
                ToStderr()(survey::FindingLine(file.file, finding, isTerminal_));
}

}  // namespace cli
