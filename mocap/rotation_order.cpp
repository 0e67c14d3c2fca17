// Converts the rotations of every node to the order in which the host applies them: x, then y, then
// z.
#include <algorithm>
#include <utility>

#include "mocap/mocap_import_base.h"
#include "mocap/parse_status.h"
#include "mocap/rotation_jobs.h"
#include "mocap/rotation_keys.h"

namespace {

using CHANNELS = MOCAPMODEL::CHANNELS;

// Whether the rotation slots are in the order x, y, z. Any of them may be missing. A node with more
// than three rotations is never in order.
bool IsInOrder(const MOCAPMODEL& node) {
    std::uint8_t previous = kEmptySlot;
    for (const CHANNELS& slot : node.channels) {
        if (!IsRotation(slot.type)) continue;
        if (slot.type <= previous) return false;
        previous = slot.type;
    }
    return true;
}

// Adds the conversion of the keys of the three slots in `list`. If `firstIsOutermost` is true, the
// rotation of `list[0]` acts last, as in a BVH file. If it is false, the rotation of `list[0]` acts
// first, as in an Acclaim file. After the conversion, the three slots have the keys of the x, y and
// z angles, in this order. The caller must set the types of the slots.
void AddConversion(CHANNELS* const* list, bool firstIsOutermost, RotationJobs& jobs) {
    RotationKeys keys;
    RotationProduct product;
    for (int i = 0; i < 3; ++i) {
        const CHANNELS& acting = *list[firstIsOutermost ? 2 - i : i];
        keys.factor[i] = acting.keys.Values().get();
        product.axis[i] = acting.type - kRotationX;
        keys.axis[i] = list[i]->keys.Values().get();
    }
    jobs.Add(keys, product);
}

// Gives the slot `frameCount` keys with the value 0 and the times of the keys of `like`. Returns
// false when memory runs out.
bool AddZeroChannel(CHANNELS& slot, std::uint8_t type, const CHANNELS& like,
                    std::uint32_t frameCount) {
    KeyArray::Numbers zeros = AllocateNumbers(frameCount);
    if (!zeros) return false;
    std::fill_n(zeros.get(), frameCount, 0.0);
    slot.keys = KeyArray(like.keys.Times(), std::move(zeros));
    slot.type = type;
    return true;
}

// Describes the slots of a node for AllocateAllRotationChannels.
struct RotationSlots {
    int rotations = 0;        // how many rotation slots there are; the list has only three
    bool repeated = false;    // an axis is listed twice
    bool present[3] = {};     // for x, y and z: whether the node has this rotation
    CHANNELS* spare[2] = {};  // the first two empty slots
};

RotationSlots SurveySlots(MOCAPMODEL& node, CHANNELS** list) {
    RotationSlots found;
    int spares = 0;
    for (CHANNELS& slot : node.channels) {
        if (slot.type == kEmptySlot && spares < 2) found.spare[spares++] = &slot;
        if (!IsRotation(slot.type)) continue;
        if (found.rotations < 3) list[found.rotations] = &slot;
        ++found.rotations;
        bool& present = found.present[slot.type - kRotationX];
        found.repeated |= present;
        present = true;
    }
    return found;
}

}  // namespace

void CMocapImportBase::GetAllRotationChannels(MOCAPMODEL* node, CHANNELS** list) {
    int listed = 0;
    for (CHANNELS& slot : node->channels)
        if (IsRotation(slot.type) && listed < 3) list[listed++] = &slot;
}

std::int32_t CMocapImportBase::AllocateAllRotationChannels(MOCAPMODEL* node, CHANNELS** list) {
    std::fill(list, list + 3, nullptr);
    const RotationSlots found = SurveySlots(*node, list);
    if (found.rotations == 0) return mocap::kNoRotation;
    if (found.repeated)
        return Fail(Zelk::status::kInvalidData, L"Rotation channel found more than once on a node");

    int listed = found.rotations;
    int spares = 0;
    for (std::uint8_t axis = 0; axis < 3; ++axis) {
        if (found.present[axis]) continue;
        CHANNELS* const slot = found.spare[spares++];
        if (slot == nullptr)
            return Fail(Zelk::status::kInvalidData, L"No channel left for a missing rotation");
        const auto type = static_cast<std::uint8_t>(kRotationX + axis);
        if (!AddZeroChannel(*slot, type, *list[0], frameCount)) return Zelk::status::kOutOfMemory;
        list[listed++] = slot;
    }
    return Zelk::status::kOk;
}

std::int32_t CMocapImportBase::FixRotationsOrder() {
    progressBar->SetText(L"Converting rotations order...");
    RotationJobs jobs(frameCount);
    const std::int32_t status = CollectRotationsOrder(jobs);
    jobs.Run();
    return status;
}

std::int32_t CMocapImportBase::CollectRotationsOrder(RotationJobs& jobs) {
    const bool isBiovision = format == MOCAP_FORMAT_BIOVISION;
    for (const auto& node : models) {
        if (CheckCancelled()) return Zelk::status::kCancelled;
        if (isBiovision) progressBar->Advance(10);

        CHANNELS* list[3] = {};
        GetAllRotationChannels(node.get(), list);
        if (list[0] == nullptr || LacksKeys(*list[0]) || IsInOrder(*node)) continue;
        const std::int32_t status = AllocateAllRotationChannels(node.get(), list);
        if (status < 0) return status;

        AddConversion(list, isBiovision, jobs);
        for (int i = 0; i < 3; ++i)
            list[i]->type = static_cast<std::uint8_t>(kRotationX + i);
    }
    return Zelk::status::kOk;
}
