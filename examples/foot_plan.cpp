#include "examples/foot_plan.h"

#include <cmath>
#include <vector>

#include "examples/trunk.h"

namespace examples {
namespace {

// The angle by which a foot points outwards, in degrees (Murray et al. 1964).
constexpr double kToeOut = 7.0;
// Half the distance between the lines on which the left and the right heel land, in cm (Murray et
// al. 1964).
constexpr double kHeelHalfWidth = 4.0;
// How far the heel lands in front of the pelvis, in cm. Here the pelvis is assumed to move forward
// at a constant speed.
constexpr double kHeelLead = 26.0;
// The forward speed of the heel just before it lands, in cm per cycle (Winter 1992).
constexpr double kLandingSpeed = 70.0;

// Each curve is a list of {percent, value}. The percent is the time since the foot landed, in
// percent of a cycle. The values come from Winter (1991) and from Perry and Burnfield (2010). They
// are rounded and smoothed.

// The angle between sole and floor, in degrees. It is positive if the front of the sole is
// higher than the heel. The foot is flat from 8 % to 28 %, then the heel rises.
const std::vector<Curve::Knot> kPitch = {{0, 20},    {3, 13},   {8, 0},    {28, 0},   {34, -2},
                                         {40, -6.5}, {46, -14}, {52, -28}, {56, -44}, {60, -61},
                                         {64, -66},  {69, -57}, {75, -39}, {80, -21}, {85, -4},
                                         {90, 9},    {95, 17},  {98, 20},  {100, 20}};
// The angle between toe and floor while the foot is on the floor, in degrees. It is positive if the
// tip of the toe is up. From 50 % to 60 %, the toe turns about its tip, which stays on the floor.
const std::vector<Curve::Knot> kToePitch = {{50, 0}, {53, -3}, {56.5, -12}, {60, -26}};
// The angle between toe and sole, in degrees. It is positive if the toe is bent up. This curve is
// used from 0 to 8 %, and from 60 % to 100 %, when the foot is in the air. From 8 % to 60 %, the
// angle is kToePitch minus kPitch.
const std::vector<Curve::Knot> kToeBend = {{0, 10},  {3, 8},   {8, 0},  {60, 35},
                                           {65, 25}, {70, 12}, {80, 5}, {100, 10}};
// The angle between thigh and vertical while the foot is in the air, in degrees. It is positive if
// the knee is in front of the hip.
const std::vector<Curve::Knot> kThigh = {{55, -13},  {60, -7}, {65, 4},  {70, 14}, {75, 22},
                                         {80, 26.5}, {85, 28}, {90, 27}, {95, 24}, {100, 22}};
// The bend of the knee while the foot is in the air, in degrees. It is 0 if the leg is straight.
const std::vector<Curve::Knot> kKnee = {{55, 25},   {60, 39}, {65, 54}, {70, 62.5},
                                        {72, 63.5}, {75, 62}, {80, 52}, {85, 36},
                                        {90, 18},   {95, 6},  {100, 4}};

}  // namespace

double Sign(Side side) {
    return side == Side::kLeft ? 1 : -1;
}

Vec3 HipAt(Side side, double cycles, const Vec3& hipOffset) {
    const Placement pelvis = PelvisAt(cycles);
    return pelvis.origin +
           pelvis.rotation * Vec3{Sign(side) * hipOffset.x, hipOffset.y, hipOffset.z};
}

FootPlan::FootPlan(const Skeleton& skeleton)
    : hipOffset_(skeleton[kLeftUpLeg].offset),
      thigh_(Length(skeleton[kLeftLeg].offset)),
      shank_(Length(skeleton[kLeftFoot].offset)),
      contacts_(MakeFootContacts()),
      pitch_(kPitch),
      toePitch_(kToePitch),
      toeBend_(kToeBend),
      thighAngle_(kThigh),
      kneeAngle_(kKnee) {}

FootPlacement FootPlan::At(Side side, double cycles) const {
    const double delay = side == Side::kLeft ? 0.0 : 0.5;
    const double step = std::floor(cycles - delay) + delay;
    const double phase = cycles - step;
    return phase < kToeOff ? Stance(side, step, phase) : Swing(side, step, phase);
}

FootPlacement FootPlan::Stance(Side side, double step, double phase) const {
    const Rotation heading = TurnY(Sign(side) * kToeOut);
    const double pitch = pitch_.At(phase);
    const Rotation rotation = heading * TurnX(-pitch);
    const Vec3 heel{Sign(side) * kHeelHalfWidth, 0, kStride * step + kHeelLead};
    if (phase < kFootFlat) return {heel - rotation * contacts_.heel, rotation, toeBend_.At(phase)};
    const double toePitch = toePitch_.At(phase);
    const Vec3 tip = heel + heading * (contacts_.tip - contacts_.heel);
    const Vec3 ball = tip + heading * (TurnX(-toePitch) * (contacts_.ball - contacts_.tip));
    return {ball - rotation * contacts_.ball, rotation, toePitch - pitch};
}

// The ankle's path in the air comes from the published joint angles, plus a correction. With the
// correction, the path starts with the position and the speed of the ankle when the foot leaves the
// floor. It ends at the position of the ankle when the foot lands. Its speed at the end is the
// ankle's speed after landing plus kLandingSpeed.
FootPlacement FootPlan::Swing(Side side, double step, double phase) const {
    constexpr double kSpan = 1 - kToeOff;
    constexpr double kMoment = 1e-4;  // a speed is measured over this many cycles
    const auto stance = [&](double from, double at) { return Stance(side, from, at).ankle; };
    const auto published = [&](double at) { return AnkleByAngles(side, step, at); };
    const auto speed = [](const Vec3& before, const Vec3& after) {
        return (kSpan / kMoment) * (after - before);
    };
    const Vec3 lifted = stance(step, kToeOff);
    const Vec3 startError = lifted - published(kToeOff);
    const Vec3 startSpeedError = speed(stance(step, kToeOff - kMoment), lifted) -
                                 speed(published(kToeOff), published(kToeOff + kMoment));
    const Vec3 landed = stance(step + 1, 0);
    const Vec3 endError = landed - published(1);
    const Vec3 endSpeedError = kSpan * Vec3{0, 0, kLandingSpeed} +
                               speed(landed, stance(step + 1, kMoment)) -
                               speed(published(1 - kMoment), published(1));
    const double t = (phase - kToeOff) / kSpan;
    const double u = 1 - t;
    const Vec3 correction = (u * u * (1 + 2 * t)) * startError + (u * u * t) * startSpeedError +
                            (t * t * (1 + 2 * u)) * endError - (t * t * u) * endSpeedError;
    const Rotation rotation = TurnY(Sign(side) * kToeOut) * TurnX(-pitch_.At(phase));
    return {AnkleByAngles(side, step, phase) + correction, rotation, toeBend_.At(phase)};
}

Vec3 FootPlan::AnkleByAngles(Side side, double step, double phase) const {
    const double thigh = thighAngle_.At(phase);
    const Rotation thighTurn = TurnX(-thigh);
    const Rotation shankTurn = TurnX(kneeAngle_.At(phase) - thigh);
    Vec3 ankle = HipAt(side, step + phase, hipOffset_) + thighTurn * Vec3{0, -thigh_, 0} +
                 shankTurn * Vec3{0, -shank_, 0};
    ankle.x = Sign(side) * kHeelHalfWidth;
    return ankle;
}

}  // namespace examples
