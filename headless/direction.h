#pragma once

#include "headless/double_pair.h"

namespace headless {

// The angle from (1, 0) to (`cosine`, `sine`), in degrees from -180 to 180. The vector may have any
// length. `high` is the double nearest to the angle, or in about one of 10,000 cases the double
// next to that; `low` is the rest. Multiples of 90 degrees are exact.
DoublePair DirectionInDegrees(const DoublePair& sine, const DoublePair& cosine);

}  // namespace headless
