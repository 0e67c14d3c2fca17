// The trunk of the walker at any time of the walk: the pelvis that carries it, and what stands on
// that.
#pragma once

#include "examples/rotation.h"

namespace examples {

constexpr double kStride = 140.0;  // cm the walker gains in a cycle

// Times are in cycles, counted from the left foot's first contact. Rotations lead from the T-pose
// to the world.
struct Placement {
    Vec3 origin;  // cm, in the world
    Rotation rotation;
};

Placement PelvisAt(double cycles);
Rotation ThoraxAt(double cycles);
Rotation HeadAt(double cycles);

// A swing from -1 to 1, once a cycle, that is at its highest at `peak`; both in cycles.
double OncePerCycle(double cycles, double peak);

// The rotation a part of the way from `from` to `to`, 0 to 1, along the shortest turn.
Rotation Between(const Rotation& from, const Rotation& to, double part);

}  // namespace examples
