// Handles the signals that ask the program to stop: SIGINT, which Ctrl-C sends, SIGTERM and SIGHUP.
// If SIGHUP was ignored when the program was started, it stays ignored.
#pragma once

namespace cli {

// Sets handlers for the signals. After that, the first signal only makes Interrupted() return true,
// and a second one ends the process. Call it before the import begins.
void CatchInterrupts();
// Restores the system's default handling of the signals.
void RestoreInterrupts();

// While an object of this class exists, a signal removes the temporary files with mended
// texts and ends the process with exit status kCancelled. Use it for work that cannot be cancelled
// in another way and that leaves no other files.
class ExitOnInterruptScope {
  public:
    ExitOnInterruptScope() noexcept;
    ~ExitOnInterruptScope();
    ExitOnInterruptScope(const ExitOnInterruptScope&) = delete;
    ExitOnInterruptScope& operator=(const ExitOnInterruptScope&) = delete;
};

// Returns whether one of the signals has arrived since CatchInterrupts was called.
bool Interrupted() noexcept;

}  // namespace cli
