// Shows the user an import, or another call of the plug-in, while it runs. Prints the log to stderr
// and, if stderr is a terminal, draws the progress bar there. Also decides what Ctrl-C does.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "bridge/import_progress.h"
#include "cli/arguments.h"
#include "cli/interrupt.h"
#include "cli/log_printer.h"
#include "cli/progress_line.h"
#include "take/listener.h"

namespace cli {

struct ShowOptions {
    Progress progress = Progress::Auto;
    bool drawBar = true;       // draw the bar, if there is one and stderr is a terminal
    bool errorsOnly = false;   // print only errors and warnings
    bool showFindings = true;  // print the findings of the survey
    // The paths of the files. Before each log line, the path of the file that it is about is
    // printed. If both paths are empty, nothing is printed before the log lines.
    std::string file{};        // the .bvh or .asf
    std::string motionFile{};  // the .amc; empty if there is none
    // What is imported, so that the drawn bar rises evenly. If this is not set, the bar is drawn as
    // the plug-in moves it.
    std::optional<bridge::ImportKind> kind{};
};

// Returns whether the plug-in gets a progress bar.
bool HasProgressBar(const ShowOptions& options);
// Returns whether the bar is also drawn. It is drawn only on a terminal that can redraw a line.
bool DrawsBar(const ShowOptions& options);
// Returns a bar that is drawn on stderr.
std::unique_ptr<ProgressLine> MakeBar();

// Create it before the import begins, and destroy it after the import has ended. The constructor
// calls CatchInterrupts, and the destructor removes the bar. Until the plug-in shows its bar, the
// line of the bar says which file is read.
class ImportShow {
  public:
    explicit ImportShow(const ShowOptions& options);

    // Returns whether the plug-in gets a progress bar. Without a bar, the plug-in cannot notice
    // that the user cancels.
    bool HasProgressBar() const { return hasProgressBar_; }
    // Returns a listener for take::Import or take::Call. It refers to this object.
    take::Listener BuildListener();
    // Prepares for a call of the plug-in. If the plug-in gets no progress bar, Ctrl-C ends the
    // process during the call. If the plug-in gets a bar, the bar is drawn during the call,
    // provided that DrawsBar returns true.
    // In an import, the listener calls BeginCall after the survey.
    void BeginCall();
    // Removes the bar. After EndCall, Ctrl-C no longer ends the process, but only asks it to stop.
    // Call EndCall after the plug-in has run, if this object is not destroyed then.
    void EndCall();

  private:
    void ShowFindings(const std::vector<take::FileFindings>& findings) const;
    void ShowReading();
    void ShowBar(const headless::BarEvent& event);
    void ShowShare();
    bool IsCancelled();

    ShowOptions options_;
    bool isTerminal_;
    bool hasProgressBar_;  // whether the plug-in gets a bar, even if the bar is not drawn
    LogPrinter log_;
    std::unique_ptr<ProgressLine> bar_;               // null if the bar is not drawn
    std::optional<bridge::ImportProgress> progress_;  // set if ShowOptions::kind is set
    std::wstring reading_;  // says which file is read; empty after it was read
    std::optional<ExitOnInterruptScope> exitOnInterrupt_;  // set while Ctrl-C ends the process
};

}  // namespace cli
