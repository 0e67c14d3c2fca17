// The walk as a Biovision file: centimetres, degrees.
#pragma once

#include <string>
#include <vector>

#include "examples/gait_model.h"
#include "examples/skeleton.h"

namespace examples {

// The whole file. `poses` are the frames, in order.
std::string WriteBvh(const Skeleton& skeleton, const std::vector<Pose>& poses);

}  // namespace examples
