// Draws the host's progress bar as one line of a terminal.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "headless/session.h"

namespace cli {

// Draws its line again when an event arrives. If the line was last drawn less than `interval` ago,
// it stays as it is. The destructor erases the line.
class ProgressLine {
  public:
    // `columns` is the terminal's width. `print` writes its argument to the terminal. It must write
    // control sequences unchanged.
    ProgressLine(int columns, std::chrono::milliseconds interval,
                 std::function<void(std::string_view)> print);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    void Receive(const headless::BarEvent& event);
    // Erases the line, so that something else can be printed. A later event draws the line again.
    void Erase();

  private:
    void Draw();
    std::string Text() const;

    int columns_;
    std::chrono::milliseconds interval_;
    std::function<void(std::string_view)> print_;
    std::optional<std::chrono::steady_clock::time_point> lastDrawn_;
    std::string drawn_;  // the text that is on the line now

    std::int32_t minimum_ = 0;
    std::int32_t maximum_ = 100;
    std::int32_t value_ = 0;
    std::wstring caption_;
    bool visible_ = false;
};

// Returns the width in columns of the terminal that the file descriptor `file` refers to. Returns
// 80 if the width is not known.
int TerminalColumns(int file);

}  // namespace cli
