// The walk as an Acclaim pair: lengths in centimetres, degrees.
#pragma once

#include <string>
#include <vector>

#include "examples/gait_model.h"
#include "examples/skeleton.h"

namespace examples {

// An Acclaim bone is the segment from its joint to the next, so each joint becomes the bone that
// starts there, the hips become the root, and bones without freedom lead from the root to the
// joints around it.
std::string WriteAsf(const Skeleton& skeleton);

// The motion for that skeleton. Throws std::logic_error if a joint turns about an axis that its
// bone is not free to turn about.
std::string WriteAmc(const Skeleton& skeleton, const std::vector<Pose>& poses);

}  // namespace examples
