// For tests: makes the session's operations fail and its cancel button be pressed at a chosen
// moment. Not installed; the library exports these functions for the project's own tests alone.
// They act on Session::Current(), whose Reset undoes them all.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "host/export.h"

namespace headless {

// From now on the `call`-th call (counted from 1) of `operation` ("AddNull", "SetKeys", …) returns
// a failing status or an empty result and changes nothing. A second fault of one operation replaces
// the first; call 0 takes it back. A name that is no operation is a std::invalid_argument. Host
// commands count twice: as "ExecuteCommand" and by their own name.
ZELK_API void FailOperation(std::string_view operation, std::uint64_t call);
ZELK_API void ClearFaults();
// How often `operation` was called since the session's last Reset.
ZELK_API std::uint64_t OperationCalls(std::string_view operation);
// Every operation that can be told to fail.
ZELK_API const std::vector<std::string_view>& FaultyOperations();

// The cancel button reads as pressed from the `poll`-th poll on (counted from 1; 0: never).
ZELK_API void PressCancelAtPoll(std::uint64_t poll);
// What the cancel flag reads when pressed (automation true, -1, otherwise).
ZELK_API void SetPressedValue(std::int16_t value);
// How often the cancel button was read since the session's last Reset.
ZELK_API std::uint64_t CancelPolls();

}  // namespace headless
