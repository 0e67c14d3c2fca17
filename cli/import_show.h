// An import, or a call of the plug-in, as it appears to the person before the terminal: the log on
// stderr as it is written, the bar there where stderr is a terminal, Ctrl-C as a request to stop.
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
    bool drawBar = true;      // where it can be
    bool errorsOnly = false;  // of the log errors and warnings, of findings all but notes
    bool showFindings = true;
    // Before each log line; both empty: nothing.
    std::string file{};
    std::string motionFile{};
};

// To be made before the import begins and kept until it ends.
class ImportShow {
  public:
    explicit ImportShow(const ShowOptions& options);

    // Whether the plug-in is to have a progress bar, which is what the user can cancel by.
    bool HasProgressBar() const { return hasProgressBar_; }
    // Refers to this.
    take::Listener Listen();
    // From now on the plug-in runs: without a bar nothing but the end of the process can stop it.
    void BeginCall();
    // Ctrl-C is a request to stop again, and the bar is gone.
    void EndCall();

  private:
    void ShowFindings(const std::vector<take::FileFindings>& findings) const;

    ShowOptions options_;
    bool isTerminal_;
    bool hasProgressBar_;
    LogPrinter log_;
    std::optional<ProgressLine> bar_;
    std::optional<UncancellableStretch> uncancellable_;
};

}  // namespace cli
