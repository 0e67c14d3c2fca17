#include "survey/bvh_rotations.h"

#include <algorithm>
#include <cmath>

#include "math/angles.h"
#include "math/listed_rotations.h"

namespace survey {
namespace {

// If the cosine of the angle about y is below this, the angles about x and z count as rotating
// about the same axis (gimbal lock).
constexpr double kLock = 1e-14;
// A double between 2^52 and 2^53 has no fraction. So adding this number rounds to an integer.
constexpr double kNoFraction = 0x1.8p52;

using Angles = std::array<double, 3>;  // about x, y and z, in degrees

// Returns what std::nearbyint returns, but mostly without calling a function.
double Rounded(double number) {
    if (std::abs(number) < 0x1p51)
        return std::copysign((number + kNoFraction) - kNoFraction, number);
    return std::nearbyint(number);
}

// Adds full turns to the angle, so that it is as near as possible to `to`. Both are in degrees.
double NearestTurn(double angle, double to) {
    const double turns = Rounded((to - angle) * (1.0 / math::kFullTurn));
    return angle + math::kFullTurn * turns;
}

// Adds full turns to each angle, so that it is as near as possible to the same angle in `before`.
// Returns the sum of the squared differences.
double FollowFrom(Angles& angles, const Angles& before) {
    double distance = 0.0;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        angles[axis] = NearestTurn(angles[axis], before[axis]);
        const double step = angles[axis] - before[axis];
        distance += step * step;
    }
    return distance;
}

// Whether the angles differ so little from those before that no other angles of the same rotation
// are nearer: x and z of all others are 135 degrees or more from those before.
bool AreClose(const Angles& angles, const Angles& before) {
    constexpr double kNear = math::kHalfTurn / 4.0;
    return std::abs(angles[0] - before[0]) < kNear && std::abs(angles[1] - before[1]) < kNear &&
           std::abs(angles[2] - before[2]) < kNear;
}

}  // namespace

ReexpressedAngles::ReexpressedAngles(const BvhJoint& joint) {
    for (std::size_t i = 0; i < joint.channelCount; ++i) {
        if (!IsRotation(joint.channels[i])) continue;
        axes_[count_] = AxisOf(joint.channels[i]);
        columns_[count_++] = joint.firstValue + i;
    }
}

ReexpressedAngles::Matrix ReexpressedAngles::Product(const double* row) const {
    Matrix m = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    for (std::size_t i = 0; i < count_; ++i) {
        const double angle = row[columns_[i]] * math::kRadiansPerDegree;
        const double sine = std::sin(angle);
        const double cosine = std::cos(angle);
        const std::size_t from = (axes_[i] + 1) % 3;
        const std::size_t to = (axes_[i] + 2) % 3;
        for (std::size_t line = 0; line < 9; line += 3) {
            const double a = m[line + from];
            const double b = m[line + to];
            m[line + from] = a * cosine + b * sine;
            m[line + to] = b * cosine - a * sine;
        }
    }
    return m;
}

// Before the first frame, the listed angles count as those of the frame before.
void ReexpressedAngles::Begin(const double* row) {
    if (!isFirst_) return;
    isFirst_ = false;
    for (std::size_t i = 0; i < count_; ++i)
        previous_[axes_[i]] = row[columns_[i]];
}

void ReexpressedAngles::FollowAngles(const Angles& angles, bool isLocked) {
    if (AreClose(angles, previous_)) {
        previous_ = angles;
        return;
    }
    Angles near = angles;
    Angles far = {near[0] + math::kHalfTurn, math::kHalfTurn - near[1], near[2] + math::kHalfTurn};
    // `near` and `far` are the same rotation. At gimbal lock `near` is used, because it keeps z.
    if (FollowFrom(near, previous_) <= FollowFrom(far, previous_) || isLocked)
        previous_ = near;
    else
        previous_ = far;
}

// Angles z and y are computed from the first column of the matrix. Then the rotation about z is
// undone, and x is computed from the result. So x makes up for the error that z has near gimbal
// lock.
void ReexpressedAngles::Next(const double* row, double angles[3]) {
    Begin(row);
    const Matrix m = Product(row);
    const double cosine = std::sqrt(m[0] * m[0] + m[3] * m[3]);
    const bool isLocked = cosine < kLock;
    double sinZ = 0.0;
    double cosZ = 1.0;
    double z = previous_[2] * math::kRadiansPerDegree;
    if (isLocked) {
        sinZ = std::sin(z);
        cosZ = std::cos(z);
    } else {
        sinZ = m[3] / cosine;
        cosZ = m[0] / cosine;
        z = std::atan2(m[3], m[0]);
    }
    const double y = std::atan2(-m[6], cosine);
    const double x = std::atan2(sinZ * m[2] - cosZ * m[5], cosZ * m[4] - sinZ * m[1]);
    FollowAngles(
        {x * math::kDegreesPerRadian, y * math::kDegreesPerRadian, z * math::kDegreesPerRadian},
        isLocked);
    std::copy(previous_.begin(), previous_.end(), angles);
}

void ReexpressedAngles::Compute(const FrameRows& rows, ListedBlock& block) const {
    math::AngleLanes listed{};
    for (std::size_t i = 0; i < count_; ++i)
        for (std::size_t frame = 0; frame < rows.count; ++frame)
            listed.angle[i][frame] = rows.first[frame * rows.stride + columns_[i]];
    math::AnglesOfListed(axes_, count_, listed, block.angles, block.cosines);
}

void ReexpressedAngles::Follow(const FrameRows& rows, const ListedBlock& block, double* angles,
                               std::size_t width) {
    Begin(rows.first);
    const auto& [x, y, z] = block.angles.angle;
    for (std::size_t frame = 0; frame < rows.count; ++frame, angles += width) {
        if (block.cosines[frame] < kLock) {
            Next(rows.first + frame * rows.stride, angles);
            continue;
        }
        FollowAngles({x[frame], y[frame], z[frame]}, false);
        std::copy(previous_.begin(), previous_.end(), angles);
    }
}

}  // namespace survey
