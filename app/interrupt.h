// Requests to stop (Ctrl-C at the keyboard is SIGINT; SIGTERM), to whatever is under way.
#pragma once

namespace headless {
class Session;
}

namespace app {

// From now on the first of them is a request to stop: it presses the session's cancel button, and
// Interrupted() tells. A second one ends the process at once. Call it once, while nothing runs.
void CatchInterrupts(headless::Session& session);
// From now on they do what the system does of itself.
void ReleaseInterrupts();

// Between these two, one of them ends the process with the status of a cancelled run: for a stretch
// that nothing else can stop and that has nothing to clean up.
void BeginUncancellable() noexcept;
void EndUncancellable() noexcept;

bool Interrupted() noexcept;

}  // namespace app
