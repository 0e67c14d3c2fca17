// The signals that ask the program to stop: SIGINT, which Ctrl-C sends, SIGTERM, and SIGHUP unless
// it is ignored.
#pragma once

namespace cli {

// From now on the first of these signals only makes Interrupted() true; a second one ends the
// process. To be called before the import begins.
void CatchInterrupts();
// Restores the system's default handling of the signals.
void RestoreInterrupts();

// While this exists, a signal removes the mended texts and ends the process with the exit status of
// a cancelled run. It is for work that cannot be cancelled otherwise and leaves no other files.
class ExitOnInterruptScope {
  public:
    ExitOnInterruptScope() noexcept;
    ~ExitOnInterruptScope();
    ExitOnInterruptScope(const ExitOnInterruptScope&) = delete;
    ExitOnInterruptScope& operator=(const ExitOnInterruptScope&) = delete;
};

// Returns whether one of the signals arrived since CatchInterrupts.
bool Interrupted() noexcept;

}  // namespace cli
