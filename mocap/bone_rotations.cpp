// Converts the rotations of the file. Before the conversion they are about the axes of the model.
// After it they are about the axes of each bone or null. In the rest pose, these axes may differ
// from the axes of the model.
#include "math/angles.h"
#include "math/rotation_math.h"
#include "mocap/bone_matrices.h"
#include "mocap/mocap_import_base.h"
#include "mocap/parse_status.h"
#include "mocap/rotation_jobs.h"
#include "mocap/rotation_keys.h"

namespace {

// Adds a conversion that replaces the rotation Rx * Ry * Rz of each frame by
// global * Rx * Ry * Rz * inverse * pose.
void MapRotations(MOCAPMODEL::CHANNELS* const* list, const BoneMatrices& bone,
                  const double pose[4][4], RotationJobs& jobs) {
    double after[4][4];
    MatrixMult(bone.inverse, pose, after);
    RotationProduct product;
    product.before = bone.global;
    product.after = after;
    jobs.Add(RotationKeys::ByType(list), product);
}

}  // namespace

std::int32_t CMocapImportBase::FixBonesRotations() {
    progressBar->SetText(L"Mapping rotations to bones...");
    RotationJobs jobs(frameCount);
    const std::int32_t status = CollectBonesRotations(jobs);
    jobs.Run();
    return status;
}

std::int32_t CMocapImportBase::CollectBonesRotations(RotationJobs& jobs) {
    BoneMatrixCache matrices(modelName);
    for (const auto& node : models) {
        if (CheckCancelled()) return Zelk::status::kCancelled;
        if (format == MOCAP_FORMAT_BIOVISION) progressBar->Advance(10);

        CHANNELS* list[3] = {};
        GetAllRotationChannels(node.get(), list);
        if (list[0] != nullptr && LacksKeys(*list[0])) continue;
        const std::int32_t status = AllocateAllRotationChannels(node.get(), list);
        if (status < 0) return status;
        if (status == mocap::kNoRotation) continue;

        const Zelk3DObject target =
            node->bone.IsValid() ? Zelk3DObject(node->bone) : Zelk3DObject(node->nullObject);
        if (!target.IsValid()) continue;
        double pose[4][4];
        MatrixRotationXYZ(pose, node->basePose[3] * math::kRadiansPerDegree,
                          node->basePose[4] * math::kRadiansPerDegree,
                          node->basePose[5] * math::kRadiansPerDegree);
        MapRotations(list, matrices.Get(target), pose, jobs);
    }
    return Zelk::status::kOk;
}
