// Requirements on the scene after an import.
#pragma once

#include <cstdint>
#include <string>

#include "tests/support/bvh_probe.h"
#include "tests/support/chain_prediction.h"

namespace fuzz {

// Requires what must be true of every scene and, with `imported`, of the scene of a successful
// import. With `numberedFrames` the file numbers its own frames, so the key times need not rise.
void RequireSoundScene(bool imported, bool numberedFrames = false);

// Requires that a failure has a known status and a message, and that a success has no message.
void RequireKnownStatus(std::int32_t status, const std::string& message);

// The positions of the joints in some frames of a motion.
struct JointPositions {
    std::vector<double> frames;
    std::vector<std::vector<support::Vec3>> positions;  // of each frame, of each joint
    std::vector<std::vector<bool>> nearRightAngle;
    double size = 0.0;  // the largest absolute value of the offsets and position keys
    // False if numbers are too large, too small or not finite, or there are too many joints.
    bool isComparable = true;
};

// Returns the positions in at most four frames of the motion.
JointPositions PositionsOf(const support::ProbedSection& section);

// Requires that the two skeletons have the same positions. `setApart` is, for each joint, the
// reason why its positions may differ, or empty.
void RequireSamePositions(const std::vector<int>& parents, const std::vector<std::string>& setApart,
                          const JointPositions& nulls, const JointPositions& bones);

}  // namespace fuzz
