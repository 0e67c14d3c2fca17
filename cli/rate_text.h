// Texts about the rate of a take.
#pragma once

#include <optional>
#include <string>

namespace cli {

// Formats a number with at most three decimal places. A number that is below 1 or very large gets
// at most six significant digits instead.
std::string ShortNumber(double number);

// Returns one line that says how much slower or faster a take plays if the user's rate
// `framesPerSecond` replaces the rate that its file states. Returns an empty text if the take has
// at least half and at most twice its speed, and if the file states no rate. Both rates are above
// zero.
std::string SpeedNote(double framesPerSecond, std::optional<double> statedRate);

}  // namespace cli
