// Writes the walk as a BVH text. Lengths are in centimetres and angles in degrees.
#pragma once

#include <string>
#include <vector>

#include "examples/gait_model.h"
#include "examples/skeleton.h"

namespace examples {

// Returns the text of the whole BVH file. `poses` has one pose for each frame, in order of time.
std::string WriteBvh(const Skeleton& skeleton, const std::vector<Pose>& poses);

}  // namespace examples
