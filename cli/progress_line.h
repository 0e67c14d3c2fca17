// The session's progress bar as one line of a terminal.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "headless/session.h"

namespace cli {

// Redraws in place as events arrive, never more often than `interval`; leaves an empty line behind.
class ProgressLine {
  public:
    // `columns`: the terminal's width. `print` takes what goes to the terminal as it is.
    ProgressLine(int columns, std::chrono::milliseconds interval,
                 std::function<void(std::string_view)> print);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    void Take(const headless::BarEvent& event);
    // Clears the line, so that something else can be printed; the next event draws it again.
    void Erase();

  private:
    void Draw();
    std::string Text() const;

    int columns_;
    std::chrono::milliseconds interval_;
    std::function<void(std::string_view)> print_;
    std::optional<std::chrono::steady_clock::time_point> lastDrawn_;
    std::string drawn_;  // empty: nothing stands on the line

    std::int32_t minimum_ = 0;
    std::int32_t maximum_ = 100;
    std::int32_t value_ = 0;
    std::wstring caption_;
    bool visible_ = false;
};

// Columns of the terminal that file descriptor leads to, 80 where it does not tell.
int TerminalColumns(int file);

}  // namespace cli
