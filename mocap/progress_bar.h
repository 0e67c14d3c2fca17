#pragma once

#include <cstdint>

#include "host/automation.h"
#include "host/string.h"

// The host's progress bar during one import. The caller's steps and range are scaled to the host's
// 0 to 32000. In a session without a user interface there is no bar. In that case all operations
// have no visible effect, and IsCancelled returns false.
class CIFPlugProgressBar {
  public:
    CIFPlugProgressBar();
    // Hides the bar. If the host has no memory to hide it, the bar stays visible.
    ~CIFPlugProgressBar();
    CIFPlugProgressBar(const CIFPlugProgressBar&) = delete;
    CIFPlugProgressBar& operator=(const CIFPlugProgressBar&) = delete;

    void Show();
    void Hide();
    // Sets the number of steps after which the bar is full.
    void SetRange(unsigned int newRange);
    // Advances the bar by `step` steps. The position is not limited: after more steps than the
    // range, the host's bar gets a value above its maximum.
    void Advance(unsigned int step);
    void Reset();
    void SetText(const Zelk::CString& text);
    bool IsCancelled();
    // Whether the host gave a bar. If it did not, IsCancelled returns false without asking the
    // host.
    bool HasBar() const { return hasBar; }

  private:
    Zelk::ProgressBar bar;
    bool hasBar;
    std::uint32_t position = 0;
    std::uint32_t range = 0;
};
