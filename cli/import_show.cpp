#include "cli/import_show.h"

#include <chrono>
#include <fmt/format.h>
#include <unistd.h>

#include "cli/print.h"
#include "survey/finding_text.h"
#include "text/path_text.h"
#include "text/wide_text.h"

namespace cli {
namespace {

constexpr std::chrono::milliseconds kBarInterval{50};

std::wstring ReadingCaption(const ShowOptions& options) {
    const std::string& path = options.motionFile.empty() ? options.file : options.motionFile;
    if (path.empty()) return {};
    return text::DecodeUtf8(fmt::format("Reading {}...", text::NamePart(path)));
}

}  // namespace

bool HasProgressBar(const ShowOptions& options) {
    return options.progress == Progress::On ||
           (options.progress == Progress::Auto && isatty(STDERR_FILENO) != 0);
}

bool DrawsBar(const ShowOptions& options) {
    return HasProgressBar(options) && options.drawBar && CanRedrawLines(STDERR_FILENO);
}

std::unique_ptr<ProgressLine> MakeBar() {
    return std::make_unique<ProgressLine>(TerminalColumns(STDERR_FILENO), kBarInterval, ToStderr());
}

ImportShow::ImportShow(const ShowOptions& options)
    : options_(options),
      isTerminal_(isatty(STDERR_FILENO) != 0),
      hasProgressBar_(cli::HasProgressBar(options)),
      log_(options.file, options.motionFile, {isTerminal_, options.errorsOnly}, ToStderr()),
      reading_(ReadingCaption(options)) {
    CatchInterrupts();
    if (DrawsBar(options)) bar_ = MakeBar();
    if (options.kind) progress_.emplace(*options.kind);
    // The survey cannot be cancelled. Therefore a signal during the survey ends the process.
    exitOnInterrupt_.emplace(bar_ != nullptr);
    ShowReading();
}

take::Listener ImportShow::BuildListener() {
    take::Listener listener;
    listener.onSurveyed = [this](const auto& findings, bool isRefused) {
        exitOnInterrupt_.reset();
        if (bar_) bar_->Erase();
        if (options_.showFindings) ShowFindings(findings);
        if (!isRefused) BeginCall();
    };
    listener.onLog = [this](const headless::LogLine& line) {
        if (bar_) bar_->Erase();
        log_.Print(line);
        ShowReading();
    };
    listener.onBar = [this](const headless::BarEvent& event) {
        if (bar_) ShowBar(event);
    };
    listener.isCancelled = [this] { return IsCancelled(); };
    return listener;
}

void ImportShow::BeginCall() {
    exitOnInterrupt_.reset();
    if (!hasProgressBar_) exitOnInterrupt_.emplace();
    ShowReading();
}

void ImportShow::EndCall() {
    exitOnInterrupt_.reset();
    bar_.reset();
}

void ImportShow::ShowReading() {
    if (bar_ && !reading_.empty()) bar_->Show(reading_, std::nullopt);
}

void ImportShow::ShowBar(const headless::BarEvent& event) {
    if (!reading_.empty()) {
        reading_.clear();
        bar_->Erase();
    }
    if (!progress_) {
        bar_->Receive(event);
        return;
    }
    progress_->Receive(event);
    ShowShare();
}

void ImportShow::ShowShare() {
    if (progress_->IsVisible())
        bar_->Show(progress_->Caption(), progress_->Share());
    else
        bar_->Erase();
}

bool ImportShow::IsCancelled() {
    if (bar_ && progress_ && progress_->ReceivePoll()) ShowShare();
    return Interrupted();
}

void ImportShow::ShowFindings(const std::vector<take::FileFindings>& findings) const {
    for (const take::FileFindings& file : findings)
        for (const survey::Finding& finding : file.findings)
            if (!options_.errorsOnly || finding.severity != survey::Severity::Note)
                ToStderr()(survey::FindingLine(file.file, finding, isTerminal_));
}

}  // namespace cli
