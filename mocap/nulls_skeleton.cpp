// Builds the skeleton as null objects, and the group of animated objects.
#include "host/math.h"
#include "mocap/mocap_import_base.h"
#include "mocap/scene_helpers.h"

namespace {

constexpr const wchar_t* kPoseParameters[] = {L"posx", L"posy", L"posz", L"rotx", L"roty", L"rotz"};

}  // namespace

Zelk::CStatus CMocapImportBase::CreateNull(MOCAPMODEL* node, Zelk3DObject& parent) {
    const Zelk::CStatus status =
        parent.AddNull(ZelkStringFromANSI(node->name.get()), node->nullObject);
    if (!status.Succeeded()) {
        RecordError(L"Failed to create Null object");
        return status;
    }
    Zelk::MATH::CTransformation transform;
    transform.SetTranslationFromValues(node->offset[0], node->offset[1], node->offset[2]);
    node->nullObject.GetKinematics().GetLocal().PutTransform(transform, Zelk::kCurrentTime);

    // If a value cannot be added to the base pose, the null is kept and the import goes on.
    double* value = node->basePose;
    for (const wchar_t* parameter : kPoseParameters)
        AddBasePose(node->nullObject, parameter, value++);
    return Zelk::status::kOk;
}

Zelk::CStatus CMocapImportBase::CreateNullsSkeleton() {
    for (const auto& node : models) {
        Zelk3DObject parent = ParentObject(node.get());
        const Zelk::CStatus status = CreateNull(node.get(), parent);
        if (!status.Succeeded()) return status;
    }
    return Zelk::status::kOk;
}

Zelk::CStatus CMocapImportBase::CreateGroup() {
    Zelk::CRefArray members;
    for (const auto& node : models) {
        if (!IsAnimated(*node)) continue;
        if (node->bone.IsValid())
            members.Add(node->bone.GetRef());
        else if (node->nullObject.IsValid())
            members.Add(node->nullObject.GetRef());
    }
    Zelk::Group group;
    const Zelk::CStatus status =
        lastModel.AddGroup(members, modelName + L"_Animated_Objects", false, group);
    if (!status.Succeeded()) RecordError(L"Failed to create animated objects group");
    return status;
}
