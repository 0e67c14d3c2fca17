#include "survey/bvh_walk.h"

#include <cmath>

#include "math/angles.h"

namespace survey {
namespace {

constexpr std::array<double, 9> kIdentity = {1, 0, 0, 0, 1, 0, 0, 0, 1};

// Replaces `rotation` by rotation * R, where R rotates about `axis` by `degrees`.
void RotateAbout(std::array<double, 9>& rotation, std::size_t axis, double degrees) {
    const double angle = degrees * math::kRadiansPerDegree;
    const double sine = std::sin(angle);
    const double cosine = std::cos(angle);
    const std::size_t from = (axis + 1) % 3;
    const std::size_t to = (axis + 2) % 3;
    for (std::size_t row = 0; row < 9; row += 3) {
        const double a = rotation[row + from];
        const double b = rotation[row + to];
        rotation[row + from] = a * cosine + b * sine;
        rotation[row + to] = b * cosine - a * sine;
    }
}

}  // namespace

BvhWalk::BvhWalk(const BvhSection& section, bool addsOffsets)
    : section_(section),
      addsOffsets_(addsOffsets),
      rotations_(section.joints.size()),
      positions_(section.joints.size()) {}

void BvhWalk::PoseJoint(std::size_t index, const double* row) {
    const BvhJoint& joint = section_.joints[index];
    std::array<double, 3> local = joint.offset;
    const bool isRoot = joint.parent == kNoParent;
    Rotation& rotation = rotations_[index];
    rotation = isRoot ? kIdentity : rotations_[joint.parent];
    const Rotation& parentRotation = isRoot ? kIdentity : rotations_[joint.parent];
    for (std::size_t i = 0; row != nullptr && i < joint.channelCount; ++i) {
        const std::size_t axis = AxisOf(joint.channels[i]);
        const double value = row[joint.firstValue + i];
        if (IsRotation(joint.channels[i]))
            RotateAbout(rotation, axis, value);
        else
            local[axis] = addsOffsets_ ? joint.offset[axis] + value : value;
    }
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const double* m = parentRotation.data() + 3 * axis;
        const double moved = m[0] * local[0] + m[1] * local[1] + m[2] * local[2];
        positions_[index][axis] = moved + (isRoot ? 0.0 : positions_[joint.parent][axis]);
    }
}

Extent BvhWalk::RestExtent() {
    return FrameExtent(nullptr);
}

Extent BvhWalk::FrameExtent(const double* row) {
    Extent extent;
    for (std::size_t joint = 0; joint < section_.joints.size(); ++joint) {
        PoseJoint(joint, row);
        extent.Include(positions_[joint].data());
    }
    return extent;
}

double FigureSize(const BvhSection& section, const BvhFrames& frames) {
    BvhWalk walk(section, false);
    const double size = walk.RestExtent().Diagonal();
    return size > 0.0 || frames.Count() == 0 ? size : walk.FrameExtent(frames.Frame(0)).Diagonal();
}

}  // namespace survey
