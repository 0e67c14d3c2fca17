// For tests: makes a chosen call of an operation fail, and presses the cancel button at a chosen
// poll. The header is not installed; the library exports these functions only for the project's own
// tests. They act on Session::Current(), whose Reset undoes them all.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "host/export.h"

namespace headless {

// The `call`-th call of `operation` ("AddNull", "SetKeys", …) from now on, counted from 1, returns
// a failing status or an empty result and changes nothing. An operation has one fault: a second one
// replaces the first, and call 0 removes it. Throws std::invalid_argument for an unknown operation.
// A host command counts as two operations: "ExecuteCommand" and its own name.
ZELK_API void FailOperation(std::string_view operation, std::uint64_t call);
ZELK_API void ClearFaults();
// How often `operation` was called since the session's last Reset.
ZELK_API std::uint64_t OperationCalls(std::string_view operation);
// Every operation that can be told to fail.
ZELK_API const std::vector<std::string_view>& FaultyOperations();

// The cancel button reads as pressed from the `poll`-th poll on (counted from 1; 0: never).
ZELK_API void PressCancelAtPoll(std::uint64_t poll);
// Sets the value that a pressed cancel flag reads as. Without it, that is automation true (-1).
ZELK_API void SetPressedValue(std::int16_t value);
// How often the cancel button was read since the session's last Reset.
ZELK_API std::uint64_t CancelPolls();

}  // namespace headless
