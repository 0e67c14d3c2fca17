// What the user sees of an import, or of another call of the plug-in, while it runs: the log on
// stderr and, where stderr is a terminal, the progress bar. Also decides what Ctrl-C does.
#pragma once

#include <optional>
#include <string>

#include "cli/arguments.h"
#include "cli/interrupt.h"
#include "cli/log_printer.h"
#include "cli/progress_line.h"
#include "take/listener.h"

namespace cli {

struct ShowOptions {
    Progress progress = Progress::Auto;
    bool drawBar = true;      // if there is a bar and stderr is a terminal
    bool errorsOnly = false;  // print only errors and warnings
    bool showFindings = true;
    // The file that is printed before each log line; with both empty, no name is printed.
    std::string file{};
    std::string motionFile{};
};

// Has to exist from before the import begins until it ends.
class ImportShow {
  public:
    explicit ImportShow(const ShowOptions& options);

    // Returns whether the plug-in gets a progress bar. Without one it cannot notice a cancellation.
    bool HasProgressBar() const { return hasProgressBar_; }
    // Returns a listener that refers to this object.
    take::Listener BuildListener();
    // To be called before the plug-in runs. Shows the bar; without one, Ctrl-C ends the process.
    void BeginCall();
    // To be called after the plug-in has run. Removes the bar; Ctrl-C is a request to stop again.
    void EndCall();

  private:
    void ShowFindings(const std::vector<take::FileFindings>& findings) const;

    ShowOptions options_;
    bool isTerminal_;
    bool hasProgressBar_;
    LogPrinter log_;
    std::optional<ProgressLine> bar_;
    std::optional<ExitOnInterruptScope> exitOnInterrupt_;
};

}  // namespace cli
