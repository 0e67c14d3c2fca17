// The position of each foot at any time of the walk. On the ground the foot rolls over heel, sole,
// ball and tip; in the air it follows published joint angles from one footprint to the next.
#pragma once

#include "examples/curve.h"
#include "examples/rotation.h"
#include "examples/skeleton.h"

namespace examples {

// Times in cycles after the foot's own contact with the ground.
constexpr double kToeOff = 0.60;
constexpr double kFootFlat = 0.08;

enum class Side { kLeft, kRight };

// 1 for the left, the side of +X, and -1 for the right.
double Sign(Side side);

struct FootPlacement {
    Vec3 ankle;         // cm, in the world
    Rotation rotation;  // from the T-pose to the world
    double toeBend;     // degrees, the tip of the toe upwards
};

// The position of a hip joint in the world, in cm. `cycles` is the time in cycles since the left
// foot's first contact; `hipOffset` is the vector from the pelvis to the left hip in the T-pose.
Vec3 HipAt(Side side, double cycles, const Vec3& hipOffset);

class FootPlan {
  public:
    explicit FootPlan(const Skeleton& skeleton);

    FootPlacement At(Side side, double cycles) const;

  private:
    // `step` is the time of the foot's contact, `phase` the time since then, both in cycles.
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
