#include "export/aimed_frames.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>

#include "export/lane_poses.h"
#include "export/skeleton_size.h"

namespace exporters {
namespace {

using headless::Transform;
using Vector = std::array<double, 3>;

// A bone that is shorter than this fraction of the skeleton's size has no direction.
constexpr double kNoLength = 1e-6;
// If the cosine of the angle between a bone and the z axis is larger than this, they count as
// nearly parallel.
constexpr double kNearlyParallel = 0.9;

double Dot(const Vector& a, const Vector& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

Vector Cross(const Vector& a, const Vector& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

Vector Unit(const Vector& a) {
    const double length = std::hypot(a[0], a[1], a[2]);
    return {a[0] / length, a[1] / length, a[2] / length};
}

// Finds the direction of each joint's bone at rest.
class BoneDirections {
  public:
    BoneDirections(const std::vector<Joint>& joints, std::span<const Transform> globals)
        : joints_(joints),
          globals_(globals),
          shortest_(kNoLength * BoxDiagonal(globals)),
          sizes_(joints.size(), 1) {
        for (std::size_t joint = joints.size(); joint-- > 0;)
            if (joints[joint].parent != Joint::kNoParent)
                sizes_[joints[joint].parent] += sizes_[joint];
    }

    std::vector<std::optional<Vector>> Find() const {
        std::vector<std::optional<Vector>> directions(joints_.size());
        std::vector<double> best(joints_.size(), 0.0);
        for (std::size_t joint = 0; joint < joints_.size(); ++joint) {
            const std::size_t parent = joints_[joint].parent;
            if (parent == Joint::kNoParent) continue;
            const std::optional<Vector> direction = Between(parent, joint);
            if (!direction) continue;
            const double score = Score(parent, joint, *direction);
            if (directions[parent] && score <= best[parent]) continue;
            directions[parent] = direction;
            best[parent] = score;
        }
        for (std::size_t joint = 0; joint < joints_.size(); ++joint)
            if (!directions[joint] && joints_[joint].parent != Joint::kNoParent)
                directions[joint] = directions[joints_[joint].parent];
        return directions;
    }

  private:
    std::optional<Vector> Between(std::size_t from, std::size_t to) const {
        Vector difference;
        for (std::size_t axis = 0; axis < 3; ++axis)
            difference[axis] = globals_[to].origin[axis] - globals_[from].origin[axis];
        const double length = std::hypot(difference[0], difference[1], difference[2]);
        if (!(length > shortest_)) return std::nullopt;
        return Unit(difference);
    }

    // Says how well a child fits as the end of the parent's bone; a larger number is better.
    double Score(std::size_t parent, std::size_t child, const Vector& direction) const {
        const std::size_t above = joints_[parent].parent;
        const auto incoming = above == Joint::kNoParent ? std::nullopt : Between(above, parent);
        return incoming ? Dot(*incoming, direction) : static_cast<double>(sizes_[child]);
    }

    const std::vector<Joint>& joints_;
    std::span<const Transform> globals_;
    double shortest_;
    std::vector<std::size_t> sizes_;  // for each joint, itself and all joints under it
};

Transform FrameAlong(const Vector& y) {
    const Vector forward = {0.0, 0.0, 1.0};
    const Vector upward = {0.0, 1.0, 0.0};
    const Vector& reference = std::abs(y[2]) > kNearlyParallel ? upward : forward;
    const Vector x = Unit(Cross(y, reference));
    const Vector z = Cross(x, y);
    Transform frame;
    std::copy(x.begin(), x.end(), frame.axes[0]);
    std::copy(y.begin(), y.end(), frame.axes[1]);
    std::copy(z.begin(), z.end(), frame.axes[2]);
    return frame;
}

Transform RotationOf(const Transform& transform) {
    Transform rotation = transform;
    std::fill_n(rotation.origin, 3, 0.0);
    return rotation;
}

}  // namespace

AimedFrames::AimedFrames(const std::vector<Joint>& joints, std::span<const Transform> globals) {
    const auto directions = BoneDirections(joints, globals).Find();
    for (std::size_t joint = 0; joint < joints.size(); ++joint) {
        parents_.push_back(joints[joint].parent);
        Transform turn;
        if (directions[joint])
            turn = FrameAlong(*directions[joint]) * headless::Inverse(RotationOf(globals[joint]));
        turns_.push_back(turn);
        inverses_.push_back(headless::Inverse(turn));
    }
}

void AimedFrames::ApplyToLocals(std::span<Transform> locals) const {
    for (std::size_t joint = 0; joint < locals.size(); ++joint) {
        locals[joint] = turns_[joint] * locals[joint];
        if (parents_[joint] != Joint::kNoParent)
            locals[joint] = locals[joint] * inverses_[parents_[joint]];
    }
}

void AimedFrames::ApplyToLocals(std::size_t joint, math::PoseLanes& locals) const {
    math::PoseLanes constant;
    PutInAllLanes(turns_[joint], constant);
    math::PoseLanes turned;
    math::AttachPoses(locals, constant, turned);
    if (parents_[joint] == Joint::kNoParent) {
        locals = turned;
        return;
    }
    PutInAllLanes(inverses_[parents_[joint]], constant);
    math::AttachPoses(constant, turned, locals);
}

void AimedFrames::ApplyToGlobals(std::span<Transform> globals) const {
    for (std::size_t joint = 0; joint < globals.size(); ++joint)
        globals[joint] = turns_[joint] * globals[joint];
}

}  // namespace exporters
