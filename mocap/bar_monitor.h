#pragma once

#include "mocap/parse_monitor.h"
#include "mocap/progress_bar.h"

// Connects a parser to the progress bar of its importer. The parser learns whether the user
// cancelled, and the bar shows the parser's progress.
class BarMonitor : public ParseMonitor {
  public:
    // `slot` is the importer's pointer to its progress bar, which BarInUse sets. It must not be
    // null while the parser runs, and it must outlive this object.
    explicit BarMonitor(CIFPlugProgressBar*& slot) : slot_(slot) {}
    bool IsCancelled() override { return slot_->IsCancelled(); }
    bool IsPolled() override { return slot_->HasBar(); }
    void Advance(unsigned int steps) override { slot_->Advance(steps); }

  private:
    CIFPlugProgressBar*& slot_;
};
