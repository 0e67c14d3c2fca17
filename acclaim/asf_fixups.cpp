// Converts the keys of an Acclaim motion for the objects of the scene. Rotations about the bone's
// axes become rotations about its parent's axes. Animated lengths become positions.
#include <algorithm>
#include <unordered_map>
#include <vector>

#include "acclaim/acclaim_import.h"
#include "acclaim/repeated_addition.h"
#include "math/angles.h"
#include "math/rotation_math.h"
#include "mocap/parse_status.h"
#include "mocap/rotation_jobs.h"
#include "mocap/rotation_keys.h"

using namespace Zelk::status;

namespace {

using CHANNELS = MOCAPMODEL::CHANNELS;
using ChildLists = std::unordered_map<const MOCAPMODEL*, std::vector<MOCAPMODEL*>>;

struct AxisFrame {
    double matrix[4][4];
    double inverse[4][4];
    bool isTurned;  // false if all angles are 0, so that both matrices are the identity

    explicit AxisFrame(const double* degrees)
        : isTurned(degrees[0] != 0.0 || degrees[1] != 0.0 || degrees[2] != 0.0) {
        const double x = degrees[0] * math::kRadiansPerDegree;
        const double y = degrees[1] * math::kRadiansPerDegree;
        const double z = degrees[2] * math::kRadiansPerDegree;
        MatrixRotationXYZ(matrix, x, y, z);
        MatrixRotationZYX(inverse, -x, -y, -z);
    }
};

// Adds a conversion that replaces the rotation Rx * Ry * Rz of each frame by
// inverse * Rx * Ry * Rz * matrix.
void GlobalizeKeys(CHANNELS* const* list, const AxisFrame& axes, RotationJobs& jobs) {
    RotationProduct product;
    if (axes.isTurned) {
        product.before = axes.inverse;
        product.after = axes.matrix;
    }
    jobs.Add(RotationKeys::ByType(list), product);
}

// Returns the children of every node whose length is animated. Children are in the order of
// `models`.
ChildLists GatherChildren(const std::vector<std::unique_ptr<MOCAPMODEL>>& models) {
    ChildLists children;
    for (const auto& node : models)
        if (node->parent != nullptr && FindChannel(*node->parent, kBoneLength) != nullptr)
            children[node->parent].push_back(node.get());
    return children;
}

// The position channels to which the offset of a child is added, one for each axis.
struct Targets {
    CHANNELS* axis[3] = {};
    bool operator==(const Targets&) const = default;
};

// If the slot has no keys, gives it `count` keys with the value 0. Returns false when memory runs
// out.
bool EnsureKeys(CHANNELS& slot, std::uint32_t count) {
    if (slot.keys) return true;
    slot.keys = AllocateKeys(count);
    if (!slot.keys) return false;
    std::fill_n(slot.keys.Times().get(), count, 0.0);
    std::fill_n(slot.keys.Values().get(), count, 0.0);
    return true;
}

enum class Found { All, NoSlot, NoMemory };

// Stores a position channel for each axis in `targets`. The child's own position channels replace
// the channels of an earlier child in `targets`. If neither the child nor `targets` has a channel
// for an axis, the child gets a new one. It is intended that a child without position channels
// shares the channels of an earlier child.
Found FindTargets(MOCAPMODEL& child, std::uint32_t frameCount, Targets& targets) {
    for (CHANNELS& slot : child.channels)
        if (IsPosition(slot.type)) targets.axis[slot.type - kPositionX] = &slot;
    for (std::uint8_t axis = 0; axis < 3; ++axis) {
        CHANNELS*& target = targets.axis[axis];
        if (target == nullptr) {
            target = FindChannel(child, kEmptySlot);
            if (target == nullptr) return Found::NoSlot;
            target->type = static_cast<std::uint8_t>(kPositionX + axis);
        }
        if (!EnsureKeys(*target, frameCount)) return Found::NoMemory;
    }
    return Found::All;
}

// In each frame, adds the vector from the bone's start to its end to the targets. The vector is
// added `children` times, because that many children share the targets.
void AddOffsets(const MOCAPMODEL& bone, const CHANNELS& length, std::uint32_t frameCount,
                const Targets& targets, std::size_t children) {
    for (std::uint32_t frame = 0; children > 0 && frame < frameCount; ++frame) {
        const KeyArray::Key key = length.keys[frame];
        for (int axis = 0; axis < 3; ++axis) {
            const KeyArray::Key target = targets.axis[axis]->keys[frame];
            target.time = key.time;
            target.value = AddRepeatedly(target.value, bone.direction[axis] * key.value, children);
        }
    }
}

// Moves the bone's children to its animated end. Consecutive children with the same targets are
// handled in one step, because a bone may have very many children.
Found MoveChildren(const MOCAPMODEL& bone, const CHANNELS& length, std::uint32_t frameCount,
                   const std::vector<MOCAPMODEL*>& children) {
    Targets targets;
    std::size_t sharing = 0;
    for (MOCAPMODEL* child : children) {
        Targets own = targets;
        const Found found = FindTargets(*child, frameCount, own);
        if (found != Found::All) return found;
        if (!(own == targets)) {
            AddOffsets(bone, length, frameCount, targets, sharing);
            targets = own;
            sharing = 0;
        }
        ++sharing;
    }
    AddOffsets(bone, length, frameCount, targets, sharing);
    return Found::All;
}

}  // namespace

std::int32_t CAcclaimImport::GlobalizeRotations() {
    progressBar->SetText(L"Converting rotations...");
    RotationJobs jobs(frameCount);
    const std::int32_t status = CollectGlobalRotations(jobs);
    jobs.Run();
    return status;
}

std::int32_t CAcclaimImport::CollectGlobalRotations(RotationJobs& jobs) {
    for (const auto& node : models) {
        if (CheckCancelled()) return kCancelled;
        CHANNELS* list[3] = {};
        GetAllRotationChannels(node.get(), list);
        if (list[0] != nullptr && LacksKeys(*list[0])) continue;
        const std::int32_t status = AllocateAllRotationChannels(node.get(), list);
        if (status < 0) return status;
        if (status == mocap::kNoRotation) continue;

        GlobalizeKeys(list, AxisFrame(node->orientation), jobs);
    }
    return kOk;
}

std::int32_t CAcclaimImport::FixLength() {
    progressBar->SetText(L"Converting length animation...");
    const ChildLists children = GatherChildren(models);
    for (const auto& node : models) {
        if (CheckCancelled()) return kCancelled;
        CHANNELS* const length = FindChannel(*node, kBoneLength);
        if (length == nullptr || LacksKeys(*length)) continue;
        const auto found = children.find(node.get());
        if (node->childCount != 0 && found != children.end()) {
            const Found targets = MoveChildren(*node, *length, frameCount, found->second);
            if (targets == Found::NoSlot) return Fail(kFail, L"Failed to convert length animation");
            if (targets == Found::NoMemory) return FailForMemory();
        }
        length->type = kEmptySlot;
        length->keys.reset();
    }
    return kOk;
}
