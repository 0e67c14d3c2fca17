// Requests to stop (Ctrl-C at the keyboard is SIGINT; SIGTERM), to whatever is under way.
#pragma once

namespace cli {

// From now on the first of them is a request to stop, which Interrupted() tells. A second one ends
// the process at once. To be called while nothing runs.
void CatchInterrupts();
// From now on they do what the system does of itself.
void ReleaseInterrupts();

// For as long as one of these lives, a request ends the process with the status of a cancelled run:
// for a stretch that nothing else can stop and that has nothing to clean up but mended texts, which
// are removed.
class UncancellableStretch {
  public:
    UncancellableStretch() noexcept;
    ~UncancellableStretch();
    UncancellableStretch(const UncancellableStretch&) = delete;
    UncancellableStretch& operator=(const UncancellableStretch&) = delete;
};

bool Interrupted() noexcept;

}  // namespace cli
