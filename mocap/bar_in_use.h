#pragma once

#include "mocap/progress_bar.h"

// Sets the importer's pointer to its progress bar, and sets the pointer to null when the scope
// ends.
class BarInUse {
  public:
    BarInUse(CIFPlugProgressBar*& slot, CIFPlugProgressBar& bar) : slot_(slot) { slot_ = &bar; }
    ~BarInUse() { slot_ = nullptr; }
    BarInUse(const BarInUse&) = delete;
    BarInUse& operator=(const BarInUse&) = delete;

  private:
    CIFPlugProgressBar*& slot_;
};
