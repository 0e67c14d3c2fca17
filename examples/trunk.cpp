#include "examples/trunk.h"

#include <cmath>
#include <numbers>

namespace examples {
namespace {

// Like OncePerCycle, but with a period of one step, half a cycle.
double OncePerStep(double cycles, double peak) {
    return OncePerCycle(2 * cycles, 2 * peak);
}

}  // namespace

double OncePerCycle(double cycles, double peak) {
    return std::cos(2 * std::numbers::pi * (cycles - peak));
}

// The pelvis rises and falls by about 3 cm and sways by 4 cm from side to side. When a foot lands,
// its side of the pelvis is turned forward by 5 degrees. While a leg swings, its side of the pelvis
// is up to 4 degrees lower. Values after Murray et al. (1964), Perry and Burnfield (2010).
Placement PelvisAt(double cycles) {
    constexpr double kHeight = 95.1;  // cm: the mean height, about 3 cm lower than at rest
    Placement pelvis;
    pelvis.origin.x = 2.0 * OncePerCycle(cycles, 0.30);
    pelvis.origin.y = kHeight - 1.6 * OncePerStep(cycles, 0.035);
    // The pelvis is fastest while both feet are on the ground, and slowest over a single foot.
    pelvis.origin.z = kStride * cycles + 0.7 * OncePerStep(cycles, 0.17);
    const double turn = -5.0 * OncePerCycle(cycles, 0.0);  // positive: left side backward
    const double lift = 4.0 * OncePerCycle(cycles, 0.17);  // positive: left side upward
    const double tilt = 2.0 + 1.0 * OncePerStep(cycles, 0.10);
    pelvis.rotation = TurnY(turn) * TurnZ(lift) * TurnX(tilt);
    return pelvis;
}

// The thorax turns against the pelvis, after Murray et al. (1964). It leans a little forward, and
// over the foot that is on the ground.
Rotation ThoraxAt(double cycles) {
    const double turn = 4.0 * OncePerCycle(cycles, 0.02);
    const double lean = -1.3 * OncePerCycle(cycles, 0.28);
    const double bow = 2.5 + 0.8 * OncePerStep(cycles, 0.10);
    return TurnY(turn) * TurnZ(lean) * TurnX(bow);
}

// The head is nearly still: it nods against the rise and fall, so that the gaze stays on one point.
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
