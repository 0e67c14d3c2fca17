// The pelvis, the thorax and the head of the walker at any time of the walk.
#pragma once

#include "examples/rotation.h"

namespace examples {

constexpr double kStride = 140.0;  // how far the walker advances in one cycle, in cm

// A part of the body at one moment of the walk.
struct Placement {
    Vec3 origin;        // cm, in the world
    Rotation rotation;  // turns the part from its T-pose to its orientation in the world
};

// `cycles` is the time in cycles since the left foot landed for the first time. The rotations turn
// from the T-pose to the world.
Placement PelvisAt(double cycles);
Rotation ThoraxAt(double cycles);
Rotation HeadAt(double cycles);

// Returns the value of a cosine wave at the time `cycles`. The period of the wave is one cycle, and
// its values are from -1 to 1. At the time `peak` the value is 1. Both times are in cycles.
double OncePerCycle(double cycles, double peak);

// Returns a rotation on the shortest way from `from` to `to`. If `part` is 0 the result is `from`,
// and if `part` is 1 the result is `to`.
Rotation Between(const Rotation& from, const Rotation& to, double part);

}  // namespace examples
