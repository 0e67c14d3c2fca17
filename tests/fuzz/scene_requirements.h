// Requirements on the scene after an import.
#pragma once

#include <cstdint>
#include <string>

#include "tests/support/bvh_probe.h"
#include "tests/support/chain_prediction.h"

namespace fuzz {

// What holds of any scene, and with `imported` what holds of a success. Key times are the file's
// where it numbers its frames; then they need not rise.
void RequireSoundScene(bool imported, bool numberedFrames = false);

// That the recorded message and the status fit: a failure has a known status, a success has none.
void RequireKnownStatus(std::int32_t status, const std::string& message);

// Places of joints in some frames of a motion.
struct Places {
    std::vector<double> frames;
    std::vector<std::vector<support::Vec3>> positions;  // of each frame, of each joint
    std::vector<std::vector<bool>> nearRightAngle;
    double size = 0.0;       // the largest number that places come from
    bool isMeasured = true;  // false where numbers are too large, too small or none
};

// At most a handful of the motion's frames.
Places PlacesOf(const support::ProbedSection& section);

// Compares what `nulls` and `bones` say of each joint that is not set apart.
void RequireSamePlaces(const std::vector<int>& parents, const std::vector<std::string>& setApart,
                       const Places& nulls, const Places& bones);

}  // namespace fuzz
