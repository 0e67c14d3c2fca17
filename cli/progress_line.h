// Draws a progress bar as one line of a terminal.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "headless/session.h"

namespace cli {

// Draws its line again when an event arrives or Show is called. If the line was last drawn less
// than `interval` ago, it stays as it is, unless it was erased. The destructor erases the line.
class ProgressLine {
  public:
    // `columns` is the terminal's width. `print` writes its argument to the terminal. It must write
    // control sequences unchanged.
    ProgressLine(int columns, std::chrono::milliseconds interval,
                 std::function<void(std::string_view)> print);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    // Draws a bar of the host. Its events say how full it is.
    void Receive(const headless::BarEvent& event);
    // Draws the caption and, if `share` is set, a bar of which this share is full. `share` is a
    // number from 0 to 1.
    void Show(std::wstring_view caption, std::optional<double> share);
    // Erases the line, so that something else can be printed. A later event draws the line again.
    void Erase();

  private:
    void Draw(std::optional<int> percentage);
    std::string Text(std::optional<int> percentage) const;

    int columns_;
    std::chrono::milliseconds interval_;
    std::function<void(std::string_view)> print_;
    std::chrono::steady_clock::time_point lastDrawn_;
    std::string drawn_;  // the text that is on the line now

    std::int32_t minimum_ = 0;
    std::int32_t maximum_ = 100;
    std::int32_t value_ = 0;
    std::wstring caption_;
    bool visible_ = false;
};

// Returns whether the file descriptor `file` refers to a terminal on which a line can be drawn
// again.
bool CanRedrawLines(int file);

// Returns the width in columns of the terminal that the file descriptor `file` refers to. Returns
// 80 if the width is not known.
int TerminalColumns(int file);

}  // namespace cli
