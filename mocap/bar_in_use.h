#pragma once

#include "mocap/progress_bar.h"

// Sets the importer's progress bar, and clears it when the scope ends.
class BarInUse {
  public:
    BarInUse(CIFPlugProgressBar*& slot, CIFPlugProgressBar& bar) : slot_(slot) { slot_ = &bar; }
    ~BarInUse() { slot_ = nullptr; }
    BarInUse(const BarInUse&) = delete;
    BarInUse& operator=(const BarInUse&) = delete;

  private:
    CIFPlugProgressBar*& slot_;
};
