#pragma once

#include "headless/double_pair.h"

namespace headless {

// The angle from the vector (1, 0) to the vector (`cosine`, `sine`), in degrees from -180 to 180.
// The vector (`cosine`, `sine`) need not have length 1. `high` of the result is nearly always the
// double nearest to the angle. In about one of 10,000 cases it is a neighbour of that double. `low`
// is the rest of the angle. Multiples of 90 degrees are exact. If the larger magnitude of the
// two components is not between 1e-140 and 1e150, the result is only as accurate as std::atan2.
DoublePair DirectionInDegrees(const DoublePair& sine, const DoublePair& cosine);

}  // namespace headless
