// Writes the walk as an ASF and an AMC text. Lengths are in centimetres and angles in degrees.
#pragma once

#include <string>
#include <vector>

#include "examples/gait_model.h"
#include "examples/skeleton.h"

namespace examples {

// Returns the text of the ASF file. An Acclaim bone is the segment from one joint to the next. The
// hips become the root, and every other joint becomes the bone that starts at that joint. One more
// bone, which cannot turn, leads from the root to each child of the hips.
std::string WriteAsf(const Skeleton& skeleton);

// Returns the text of the AMC file: the motion for the skeleton that WriteAsf writes. Throws
// std::logic_error if a pose turns a joint about an axis that is not in its Joint::free.
std::string WriteAmc(const Skeleton& skeleton, const std::vector<Pose>& poses);

}  // namespace examples
