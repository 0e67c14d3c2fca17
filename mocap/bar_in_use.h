#pragma once

#include "mocap/progress_bar.h"

// The importer's bar for as long as it runs.
class BarInUse {
  public:
    BarInUse(CIFPlugProgressBar*& slot, CIFPlugProgressBar& bar) : slot_(slot) { slot_ = &bar; }
    ~BarInUse() { slot_ = nullptr; }
    BarInUse(const BarInUse&) = delete;
    BarInUse& operator=(const BarInUse&) = delete;

  private:
    CIFPlugProgressBar*& slot_;
};
