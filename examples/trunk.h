// The pelvis, the thorax and the head of the walker at any time of the walk.
#pragma once

#include "examples/rotation.h"

namespace examples {

constexpr double kStride = 140.0;  // cm that the walker advances in a cycle

// Times are in cycles since the left foot's first contact. Rotations are from the T-pose to the
// world.
struct Placement {
    Vec3 origin;  // cm, in the world
    Rotation rotation;
};

Placement PelvisAt(double cycles);
Rotation ThoraxAt(double cycles);
Rotation HeadAt(double cycles);

// A cosine wave from -1 to 1 with a period of one cycle and its maximum at `peak`. Both arguments
// are in cycles.
double OncePerCycle(double cycles, double peak);

// The rotation between `from` (`part` is 0) and `to` (`part` is 1), along the shortest turn.
Rotation Between(const Rotation& from, const Rotation& to, double part);

}  // namespace examples
