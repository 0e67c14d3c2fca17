#include "tests/support/acclaim/acclaim_prediction.h"

#include <cmath>

#include "tests/support/math.h"

namespace support {
namespace {

constexpr double kShortestParent = 0.01;

bool HasUnitDirection(const AcclaimBone& bone) {
    return std::fabs(Length(bone.direction) - 1.0) < 1e-9;
}

// Why positions may differ. The reason applies to everything below a bone and, unless
// `childrenOnly`, to the bone itself.
struct Reason {
    std::string text;
    bool childrenOnly = false;
};

Reason ReasonOf(const AcclaimPair& pair, std::size_t index, bool nulls) {
    const AcclaimBone& bone = pair.bones[index];
    if (nulls && bone.parent > static_cast<int>(index))
        return {"the file lists the child before its parent", false};
    if (!nulls && bone.attachment >= 0 && bone.firstChildAttachment >= 0 &&
        bone.firstChildAttachment < bone.attachment)
        return {"the hierarchy lists the bone's children before the bone", false};
    if (bone.axisOrder != "xyz" && bone.HasRotation() && bone.axis != Vec3{})
        return {"the axis order is not xyz", true};
    if (bone.AnimatesLength() && bone.children > 1)
        return {"an animated length on a bone with several children", true};
    if (!nulls && bone.AnimatesLength() && !HasUnitDirection(bone))
        return {"an animated length with a direction that is not of unit length", true};
    return {};
}

struct Node {
    std::size_t rigidChildren = 0;
    bool isDetached = false;
};

std::vector<Node> CollectNodes(const std::vector<AcclaimBone>& bones) {
    std::vector<Node> nodes(bones.size());
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        nodes[i].isDetached = bones[i].isRoot;
        if (bones[i].parent < 0) continue;
        const auto parent = static_cast<std::size_t>(bones[i].parent);
        if (bones[parent].length < kShortestParent)
            nodes[i].isDetached = true;
        else
            ++nodes[parent].rigidChildren;
    }
    return nodes;
}

// A bone can have the animated length of its joint only if it ends at the joint's single child.
bool ReachesItsChild(const AcclaimPair& pair, const std::vector<Node>& nodes, std::size_t bone) {
    return pair.bones[bone].children == 1 && nodes[bone].rigidChildren == 1;
}

// With nulls, the first child gets the length as a position, which needs three of its seven
// channels. If the file lists the child after its parent, the child still has the channel of its
// own length.
bool HasRoomForPosition(const std::vector<AcclaimBone>& bones, std::size_t bone) {
    for (std::size_t i = 0; i < bones.size(); ++i) {
        if (bones[i].parent != static_cast<int>(bone)) continue;
        std::size_t used = bones[i].HasRotation() ? 3 : 0;
        for (const std::string& token : bones[i].dof)
            if (token[0] == 't' || (token[0] == '|' && i > bone)) ++used;
        return used + 3 <= 7;
    }
    return true;
}

}  // namespace

std::vector<std::string> PredictSetApart(const AcclaimPair& pair, const AcclaimOptions& options) {
    std::vector<Reason> reasonsOfBones;
    for (std::size_t i = 0; i < pair.bones.size(); ++i)
        reasonsOfBones.push_back(ReasonOf(pair, i, options.nulls));
    std::vector<std::string> reasons;
    for (std::size_t i = 0; i < pair.bones.size(); ++i) {
        std::string reason = reasonsOfBones[i].childrenOnly ? "" : reasonsOfBones[i].text;
        for (int p = pair.bones[i].parent; p >= 0 && reason.empty();
             p = pair.bones[static_cast<std::size_t>(p)].parent)
            reason = reasonsOfBones[static_cast<std::size_t>(p)].text;
        reasons.push_back(reason);
    }
    return reasons;
}

std::string PredictFailure(const AcclaimPair& pair, const AcclaimOptions& options) {
    const std::vector<Node> nodes = CollectNodes(pair.bones);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (!pair.bones[i].AnimatesLength()) continue;
        if (options.nulls ? !HasRoomForPosition(pair.bones, i) : !ReachesItsChild(pair, nodes, i))
            return options.nulls ? "Failed to convert length animation"
                                 : "Failed to add channel FCurve";
    }
    return {};
}

}  // namespace support
