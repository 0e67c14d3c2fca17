// The position of each foot at any time of the walk. On the ground the foot rolls over heel, sole,
// ball and tip; in the air it follows published joint angles from one footprint to the next.
#pragma once

#include "examples/curve.h"
#include "examples/rotation.h"
#include "examples/skeleton.h"

namespace examples {

// Times in cycles, counted from the moment when the heel of the same foot lands.
constexpr double kToeOff = 0.60;    // the foot leaves the ground
constexpr double kFootFlat = 0.08;  // the whole sole is on the ground

enum class Side { kLeft, kRight };

// Returns the sign of the X coordinates on this side of the body: 1 for left, -1 for right.
double Sign(Side side);

struct FootPlacement {
    Vec3 ankle;         // cm, in the world
    Rotation rotation;  // turns the foot from its T-pose to its orientation in the world
    double toeBend;     // the angle between toe and sole in degrees; positive if the toe is bent up
};

// Returns the position of a hip joint in the world, in cm. `cycles` is the time in cycles since the
// left foot landed for the first time. `hipOffset` is always the vector from the pelvis to the left
// hip in the T-pose, even if `side` is the right side.
Vec3 HipAt(Side side, double cycles, const Vec3& hipOffset);

class FootPlan {
  public:
    explicit FootPlan(const Skeleton& skeleton);

    // `cycles` is the time in cycles since the left foot landed for the first time.
    FootPlacement At(Side side, double cycles) const;

  private:
    // `step` is the time when the foot of `side` last landed, in cycles since the left foot landed
    // for the first time. `phase` is the time since that last landing, in cycles.
    FootPlacement Stance(Side side, double step, double phase) const;
    FootPlacement Swing(Side side, double step, double phase) const;
    Vec3 AnkleByAngles(Side side, double step, double phase) const;

    Vec3 hipOffset_;
    double thigh_;
    double shank_;
    FootContacts contacts_;
    Curve pitch_;
    Curve toePitch_;
    Curve toeBend_;
    Curve thighAngle_;
    Curve kneeAngle_;
};

}  // namespace examples
