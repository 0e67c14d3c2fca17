#include "util/bone_matrices.h"

#include <vector>

#include "util/rotation_math.h"
#include "util/scene_helpers.h"

namespace {

const BoneMatrices& Identity() {
    static const BoneMatrices identity = [] {
        BoneMatrices both;
        MatrixIdentity(both.global);
        MatrixIdentity(both.inverse);
        return both;
    }();
    return identity;
}

}  // namespace

const BoneMatrices& BoneMatrixCache::Get(const Zelk3DObject& object) {
    const BoneMatrices* above = &Identity();
    std::vector<Zelk3DObject> unread;
    for (Zelk3DObject current = object; current.IsValid();) {
        const auto found = known_.find(current.GetRef().Object());
        if (found != known_.end()) {
            above = &found->second;
            break;
        }
        unread.push_back(current);
        const ZKObject parent = current.GetParent();
        if (parent.GetName() == stopName_) break;
        current = Zelk3DObject(parent.GetRef());
    }
    for (auto current = unread.rbegin(); current != unread.rend(); ++current) {
        BoneMatrices& both = known_[current->GetRef().Object()];
        double rotation[4][4], inverse[4][4];
        GetLocalRotation(*current, rotation, inverse);
        MatrixMult(rotation, above->global, both.global);
        MatrixMult(above->inverse, inverse, both.inverse);
        above = &both;
    }
    return *above;
}
