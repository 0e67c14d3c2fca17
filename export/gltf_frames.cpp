#include "export/gltf_frames.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "export/skeleton_size.h"

namespace exporters {
namespace {

using headless::Transform;

// As fractions of the figure's size: a child that is nearer than this counts as being at the root,
// and the root's translation that is then chosen.
constexpr double kAtRoot = 0.01;
constexpr double kRootLength = 0.05;

double Distance(const Transform& a, const Transform& b) {
    return std::hypot(a.origin[0] - b.origin[0], a.origin[1] - b.origin[1],
                      a.origin[2] - b.origin[2]);
}

// Whether all children of the first joint are at its position.
bool HasNoLength(const std::vector<Joint>& joints, std::span<const Transform> globals,
                 double size) {
    for (std::size_t joint = 1; joint < joints.size(); ++joint)
        if (joints[joint].parent == 0 && Distance(globals[0], globals[joint]) > kAtRoot * size)
            return false;
    return true;
}

}  // namespace

GltfFrames::GltfFrames(const std::vector<Joint>& joints, std::span<const Transform> globals,
                       const std::optional<Transform>& turn, bool aim)
    : holder_(turn.value_or(Transform())) {
    if (aim) aim_.emplace(joints, globals);
    for (const Joint& joint : joints)
        isTop_.push_back(joint.parent == Joint::kNoParent);
    const double size = BoxDiagonal(globals);
    if (joints.size() < 2 || size == 0.0 || !HasNoLength(joints, globals, size)) return;
    std::copy_n(globals[0].origin, 3, holder_.origin);
    holder_.origin[1] -= kRootLength * size;
    const Transform rotation = turn.value_or(Transform());
    Transform position;
    std::copy_n(holder_.origin, 3, position.origin);
    const Transform beforeTurn = position * headless::Inverse(rotation);
    std::copy_n(beforeTurn.origin, 3, origin_.begin());
}

void GltfFrames::ApplyToLocals(std::span<Transform> locals) const {
    if (aim_) aim_->ApplyToLocals(locals);
    for (std::size_t joint = 0; joint < locals.size(); ++joint) {
        if (!isTop_[joint]) continue;
        for (std::size_t axis = 0; axis < 3; ++axis)
            locals[joint].origin[axis] -= origin_[axis];
    }
}

void GltfFrames::ApplyToLocals(std::size_t joint, math::PoseLanes& locals) const {
    if (aim_) aim_->ApplyToLocals(joint, locals);
    if (!isTop_[joint]) return;
    for (std::size_t axis = 0; axis < 3; ++axis)
        for (double& coordinate : locals.position[axis])
            coordinate -= origin_[axis];
}

void GltfFrames::ApplyToGlobals(std::span<Transform> globals) const {
    if (aim_) aim_->ApplyToGlobals(globals);
}

}  // namespace exporters
