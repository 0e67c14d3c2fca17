#pragma once

#include <cstdint>

#include "host/automation.h"
#include "host/string.h"

// The host's progress bar during one import. The caller's steps and range are scaled to the host's
// 0 to 32000. In a session without a user interface there is no bar: then all operations do
// nothing, and IsCancelled returns false.
class CIFPlugProgressBar {
  public:
    CIFPlugProgressBar();
    // Hides the bar. When the host has no memory left for that, the bar stays visible.
    ~CIFPlugProgressBar();
    CIFPlugProgressBar(const CIFPlugProgressBar&) = delete;
    CIFPlugProgressBar& operator=(const CIFPlugProgressBar&) = delete;

    void Show();
    void Hide();
    // How many of the caller's steps make a full bar.
    void SetRange(unsigned int newRange);
    // Not clamped: steps beyond the range give the host's bar a value above its maximum.
    void Advance(unsigned int step);
    void Reset();
    void SetText(const Zelk::CString& text);
    bool IsCancelled();

  private:
    Zelk::ProgressBar bar;
    std::uint32_t position = 0;
    std::uint32_t range = 0;
};
