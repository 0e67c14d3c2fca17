#include "survey/bvh_rotations.h"

#include <algorithm>
#include <cmath>

#include "math/angles.h"
#include "threads/for_each.h"

namespace survey {
namespace {

// If the cosine of the angle about y is below this, the angles about x and z count as rotating
// about the same axis (gimbal lock).
constexpr double kLock = 1e-14;
// The joints whose angles a thread computes together.
constexpr std::size_t kJointsAtOnce = 4;
// A double above this has no place for a fraction, if the number is added to it.
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

// Angles z and y are computed from the first column of the matrix. Then the rotation about z is
// undone, and x is computed from the result. So x makes up for the error that z has near gimbal
// lock.
void ReexpressedAngles::Next(const double* row, double angles[3]) {
    if (isFirst_)
        for (std::size_t i = 0; i < count_; ++i)
            previous_[axes_[i]] = row[columns_[i]];
    isFirst_ = false;
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

    Angles near = {x * math::kDegreesPerRadian, y * math::kDegreesPerRadian,
                   z * math::kDegreesPerRadian};
    Angles far = {near[0] + math::kHalfTurn, math::kHalfTurn - near[1], near[2] + math::kHalfTurn};
    // `near` and `far` are the same rotation. At gimbal lock `near` is used, because it keeps z.
    if (FollowFrom(near, previous_) <= FollowFrom(far, previous_) || isLocked)
        previous_ = near;
    else
        previous_ = far;
    for (std::size_t axis = 0; axis < 3; ++axis)
        angles[axis] = previous_[axis];
}

// A joint's angles in a frame depend on its angles in the frame before. Therefore each thread
// computes all frames of some joints.
ReexpressedFrames::ReexpressedFrames(const BvhSection& section,
                                     const std::vector<std::size_t>& joints,
                                     const BvhFrames& frames, std::size_t threads)
    : width_(3 * joints.size()), angles_(width_ * frames.Count()) {
    std::vector<ReexpressedAngles> turned;
    turned.reserve(joints.size());
    for (const std::size_t joint : joints)
        turned.emplace_back(section.joints[joint]);
    const std::size_t parts = (joints.size() + kJointsAtOnce - 1) / kJointsAtOnce;
    threads::ForEach(parts, threads, [&](std::size_t part) {
        const std::size_t first = part * kJointsAtOnce;
        const std::size_t last = std::min(first + kJointsAtOnce, turned.size());
        for (std::size_t frame = 0; frame < frames.Count(); ++frame) {
            double* angles = angles_.data() + frame * width_ + 3 * first;
            for (std::size_t joint = first; joint < last; ++joint, angles += 3)
                turned[joint].Next(frames.Frame(frame), angles);
        }
    });
}

}  // namespace survey
