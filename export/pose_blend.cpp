#include "export/pose_blend.h"

#include <algorithm>
#include <cmath>

#include "export/quaternion.h"

namespace exporters {
namespace {

using headless::Transform;

// Below this angle, in radians, the sine in the divisor would be inexact. A straight line between
// the quaternions is then as good.
constexpr double kSmallAngle = 1e-6;

Quaternion Slerp(const Quaternion& from, const Quaternion& to, double part) {
    const double difference = std::hypot(std::hypot(to.x - from.x, to.y - from.y),
                                         std::hypot(to.z - from.z, to.w - from.w));
    // The angle between the two as vectors of four numbers. It is at most a right angle, because
    // QuaternionNear chose `to`.
    const double angle = 2.0 * std::asin(std::min(difference / 2.0, 1.0));
    double first = 1.0 - part;
    double second = part;
    if (angle > kSmallAngle) {
        first = std::sin((1.0 - part) * angle) / std::sin(angle);
        second = std::sin(part * angle) / std::sin(angle);
    }
    return {first * from.x + second * to.x, first * from.y + second * to.y,
            first * from.z + second * to.z, first * from.w + second * to.w};
}

}  // namespace

void BlendPoses(std::span<Transform> from, std::span<const Transform> to, double part) {
    for (std::size_t index = 0; index < from.size(); ++index) {
        Transform& pose = from[index];
        const Transform& other = to[index];
        for (int axis = 0; axis < 3; ++axis)
            pose.origin[axis] += (other.origin[axis] - pose.origin[axis]) * part;
        // A rotation that does not change keeps its last bits.
        if (std::equal(&pose.axes[0][0], &pose.axes[0][0] + 9, &other.axes[0][0])) continue;
        const Quaternion start = QuaternionOf(pose.axes);
        PutAxes(Slerp(start, QuaternionNear(other.axes, start), part), pose.axes);
    }
}

}  // namespace exporters
