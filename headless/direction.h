#pragma once

#include "headless/double_pair.h"

namespace headless {

// The angle from (1, 0) to (`cosine`, `sine`), which may have any length, in degrees from -180 to
// 180: in `high` the double nearest to it (in all but about one of 10,000 cases; then a neighbour),
// in `low` what is missing. Exact on the axes.
DoublePair DirectionInDegrees(const DoublePair& sine, const DoublePair& cosine);

}  // namespace headless
