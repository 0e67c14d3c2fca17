// For tests: makes a chosen call of an operation fail, and presses the cancel button at a chosen
// poll. A poll is one reading of the cancel button. This header is not installed; the library
// exports these functions only for the project's own tests. They act on Session::Current().
// Session::Reset undoes what they did.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "host/export.h"

namespace headless {

// Makes one later call of `operation` ("AddNull", "SetKeys", …) fail. The failing call returns a
// failing status or an empty result and changes nothing. `call` says which one fails; 1 is the next
// call. An operation can have only one failing call: a new `call` replaces the old one, and 0
// removes it. Throws std::invalid_argument for an unknown operation. A host command counts as two
// operations: "ExecuteCommand" and its own name.
ZELK_API void FailOperation(std::string_view operation, std::uint64_t call);
ZELK_API void ClearFaults();
// How often `operation` was called since the session's last Reset.
ZELK_API std::uint64_t OperationCalls(std::string_view operation);
// The names of all operations that FailOperation accepts.
ZELK_API const std::vector<std::string_view>& FaultyOperations();

// The cancel button reads as pressed from the `poll`-th poll on. Polls are counted from 1 since the
// session's last Reset. If `poll` is 0, an earlier call of this function has no effect any more.
ZELK_API void PressCancelAtPoll(std::uint64_t poll);
// Sets the value that a pressed cancel button reads as. Without this call it is automation true
// (-1).
ZELK_API void SetPressedValue(std::int16_t value);
// How often the cancel button was read since the session's last Reset.
ZELK_API std::uint64_t CancelPolls();

}  // namespace headless
