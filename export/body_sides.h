// Finds out from their names which joints belong to the left and to the right side of a body.
// Internal to export/.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace exporters {

enum class Side : std::uint8_t { Middle, Left, Right };

// Returns the side of each joint. A joint is on a side if its name has a word or a letter for that
// side, and if another joint has the same name with the word or letter for the other side:
// "LeftArm" and "RightArm", "LeftHip-23" and "RightHip-18", "lfemur" and "rfemur", "hand_l" and
// "hand_r", "Arm.L" and "Arm.R".
std::vector<Side> SidesOf(const std::vector<std::wstring>& names);

}  // namespace exporters
