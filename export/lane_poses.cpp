#include "export/lane_poses.h"

#include <algorithm>

#include "export/quaternion.h"

namespace exporters {

using headless::Transform;
using math::kPoseLanes;
using math::PoseLanes;

void PutPose(const Transform& transform, std::size_t lane, PoseLanes& pose) {
    for (std::size_t axis = 0; axis < 3; ++axis)
        pose.position[axis][lane] = transform.origin[axis];
    const Quaternion q = QuaternionOf(transform.axes);
    pose.rotation[0][lane] = q.x;
    pose.rotation[1][lane] = q.y;
    pose.rotation[2][lane] = q.z;
    pose.rotation[3][lane] = q.w;
}

void PutInAllLanes(const Transform& transform, PoseLanes& pose) {
    PutPose(transform, 0, pose);
    for (auto& lanes : pose.position)
        std::fill_n(lanes + 1, kPoseLanes - 1, lanes[0]);
    for (auto& lanes : pose.rotation)
        std::fill_n(lanes + 1, kPoseLanes - 1, lanes[0]);
}

void TurnPoses(const Transform& rotation, PoseLanes& poses) {
    const PoseLanes before = poses;
    PoseLanes turn;
    PutInAllLanes(rotation, turn);
    math::AttachPoses(turn, before, poses);
    const auto& axes = rotation.axes;
    for (std::size_t axis = 0; axis < 3; ++axis)
        for (std::size_t lane = 0; lane < kPoseLanes; ++lane)
            poses.position[axis][lane] = before.position[0][lane] * axes[0][axis] +
                                         before.position[1][lane] * axes[1][axis] +
                                         before.position[2][lane] * axes[2][axis];
}

}  // namespace exporters
