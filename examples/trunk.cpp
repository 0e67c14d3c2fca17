#include "examples/trunk.h"

#include <cmath>
#include <numbers>

namespace examples {
namespace {

// Does the same as OncePerCycle, but with a period of half a cycle, which is one step.
double OncePerStep(double cycles, double peak) {
    return OncePerCycle(2 * cycles, 2 * peak);
}

}  // namespace

double OncePerCycle(double cycles, double peak) {
    return std::cos(2 * std::numbers::pi * (cycles - peak));
}

// The pelvis rises and falls by about 3 cm and moves by 4 cm from side to side. When the left foot
// lands, the left side of the pelvis is turned forward by 5 degrees. While the left leg swings, the
// left side of the pelvis is up to 4 degrees lower. The right side does the same. The values are
// adapted from Murray et al. (1964) and from Perry and Burnfield (2010).
Placement PelvisAt(double cycles) {
    constexpr double kHeight = 95.1;  // the mean height in cm, about 3 cm less than in the T-pose
    Placement pelvis;
    pelvis.origin.x = 2.0 * OncePerCycle(cycles, 0.30);
    pelvis.origin.y = kHeight - 1.6 * OncePerStep(cycles, 0.035);
    // The pelvis moves fastest while both feet are on the ground, and slowest while only one foot
    // is on the ground.
    pelvis.origin.z = kStride * cycles + 0.7 * OncePerStep(cycles, 0.17);
    const double turn = -5.0 * OncePerCycle(cycles, 0.0);  // positive: left side further back
    const double lift = 4.0 * OncePerCycle(cycles, 0.17);  // positive if the left side is higher
    const double tilt = 2.0 + 1.0 * OncePerStep(cycles, 0.10);
    pelvis.rotation = TurnY(turn) * TurnZ(lift) * TurnX(tilt);
    return pelvis;
}

// The thorax turns to the right while the pelvis turns to the left, and the reverse (Murray et al.
// 1964). It leans a little forward, and a little towards the side of the leg that carries the body.
Rotation ThoraxAt(double cycles) {
    const double turn = 4.0 * OncePerCycle(cycles, 0.02);
    const double lean = -1.3 * OncePerCycle(cycles, 0.28);
    const double bow = 2.5 + 0.8 * OncePerStep(cycles, 0.10);
    return TurnY(turn) * TurnZ(lean) * TurnX(bow);
}

// The head turns very little. It nods down while the body is high, and up while the body is low. So
// the eyes keep looking at one point.
Rotation HeadAt(double cycles) {
    return TurnY(0.6 * OncePerCycle(cycles, 0.02)) * TurnX(1.0 - 1.2 * OncePerStep(cycles, 0.05));
}

Rotation Between(const Rotation& from, const Rotation& to, double part) {
    const Rotation turn = to * Inverse(from);
    const Vec3 twiceSine{turn.y.z - turn.z.y, turn.z.x - turn.x.z, turn.x.y - turn.y.x};
    const double sine = Length(twiceSine) / 2;
    if (sine < 1e-12) return part < 0.5 ? from : to;
    const double cosine = (turn.x.x + turn.y.y + turn.z.z - 1) / 2;
    const double degrees = std::atan2(sine, cosine) * 180 / std::numbers::pi;
    return TurnAbout((0.5 / sine) * twiceSine, part * degrees) * from;
}

}  // namespace examples
