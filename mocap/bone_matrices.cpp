#include "mocap/bone_matrices.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "math/rotation_math.h"
#include "mocap/scene_helpers.h"

namespace {

// Copies the first three rows and columns, which contain the rotation.
template <std::size_t From, std::size_t To>
void CopyRotation(const double (&from)[From][From], double (&to)[To][To]) {
    for (std::size_t row = 0; row < 3; ++row)
        std::copy_n(from[row], 3, to[row]);
}

}  // namespace

BoneMatrixCache::Rotations BoneMatrixCache::Packed(const BoneMatrices& matrices) {
    Rotations rotations;
    CopyRotation(matrices.global, rotations.global);
    CopyRotation(matrices.inverse, rotations.inverse);
    return rotations;
}

BoneMatrices BoneMatrixCache::Unpacked(const Rotations& rotations) {
    BoneMatrices matrices;
    MatrixIdentity(matrices.global);
    MatrixIdentity(matrices.inverse);
    CopyRotation(rotations.global, matrices.global);
    CopyRotation(rotations.inverse, matrices.inverse);
    return matrices;
}

BoneMatrices BoneMatrixCache::Get(const Zelk3DObject& object) {
    BoneMatrices above;
    MatrixIdentity(above.global);
    MatrixIdentity(above.inverse);
    std::vector<Zelk3DObject> unread;
    for (Zelk3DObject current = object; current.IsValid();) {
        const auto found = known_.find(current.GetRef().Object());
        if (found != known_.end()) {
            above = Unpacked(found->second);
            break;
        }
        unread.push_back(current);
        const ZKObject parent = current.GetParent();
        if (parent.GetName() == stopName_) break;
        current = Zelk3DObject(parent.GetRef());
    }
    for (; !unread.empty(); unread.pop_back()) {
        double rotation[4][4], inverse[4][4];
        GetLocalRotation(unread.back(), rotation, inverse);
        BoneMatrices both;
        MatrixMult(rotation, above.global, both.global);
        MatrixMult(above.inverse, inverse, both.inverse);
        above = both;
        if (unread.size() > 1) known_.emplace(unread.back().GetRef().Object(), Packed(above));
    }
    return above;
}
