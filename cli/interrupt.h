// Handles the signals that ask the program to stop: SIGINT, which Ctrl-C sends, SIGTERM and SIGHUP.
// If SIGHUP was ignored when the program was started, it stays ignored.
#pragma once

namespace cli {

// Sets handlers for the signals. After that, the first signal makes Interrupted() return true and
// does nothing else. The second signal ends the process. While an ExitOnInterruptScope exists, the
// first signal already ends the process. Call CatchInterrupts before the import begins.
void CatchInterrupts();
// Restores the system's default handling of the signals.
void RestoreInterrupts();

// While an object of this class exists, a signal removes the temporary files with mended texts and
// ends the process with exit status kCancelled. Use this class for work that cannot be cancelled in
// another way and that creates no other files.
class ExitOnInterruptScope {
  public:
    // Set `isLineDrawn` if a line is drawn on the terminal. The signal then ends that line.
    explicit ExitOnInterruptScope(bool isLineDrawn = false) noexcept;
    ~ExitOnInterruptScope();
    ExitOnInterruptScope(const ExitOnInterruptScope&) = delete;
    ExitOnInterruptScope& operator=(const ExitOnInterruptScope&) = delete;
};

// Returns whether one of the signals has arrived since CatchInterrupts was called.
bool Interrupted() noexcept;

}  // namespace cli
