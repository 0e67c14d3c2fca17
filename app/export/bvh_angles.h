// Rotations as the three angles of a BVH row.
#pragma once

namespace app {

struct BvhAngles {
    double z = 0.0, x = 0.0, y = 0.0;  // degrees
};

// The angles that turn back into `axes` (row vectors; y turns first, then x, then z) to 1e-14,
// where two of the axes fall together too. Of all of them the ones nearest to `before`, the frame
// before, so that they run on beyond 180 degrees without a jump.
BvhAngles AnglesNear(const double axes[3][3], const BvhAngles& before);

}  // namespace app
