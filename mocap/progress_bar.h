#pragma once

#include <cstdint>

#include "host/automation.h"
#include "host/string.h"

// The host's progress bar for the time of one import: the caller's steps and range scaled onto the
// host's 0 to 32000. In a session without a user interface there is no bar; everything then does
// nothing and nobody cancels.
class CIFPlugProgressBar {
  public:
    CIFPlugProgressBar();
    // Hides the bar, unless the host has no memory left to do that with.
    ~CIFPlugProgressBar();
    CIFPlugProgressBar(const CIFPlugProgressBar&) = delete;
    CIFPlugProgressBar& operator=(const CIFPlugProgressBar&) = delete;

    void Show();
    void Hide();
    // What a full bar is in the caller's steps.
    void SetRange(unsigned int newRange);
    // Not clamped: steps beyond the range give a value beyond the host's maximum.
    void Advance(unsigned int step);
    void Reset();
    void SetText(const Zelk::CString& text);
    bool IsCancelled();

  private:
    Zelk::ProgressBar bar;
    std::uint32_t position = 0;
    std::uint32_t range = 0;
};
