#include "export/fbx_skeleton.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "export/fbx_body.h"
#include "export/joint_channels.h"
#include "headless/text.h"
#include "headless/transform.h"
#include "text/wide_text.h"

namespace exporters {
namespace {

using headless::Transform;

// What a model without a mesh is.
void AddAttribute(FbxObjects& objects, std::string_view name, std::string_view variant,
                  std::string_view flags, std::int64_t owner) {
    const FbxObjects::Object attribute =
        objects.Add("NodeAttribute", "NodeAttribute", name, variant);
    attribute.node.Add("Properties70").CloseList();
    attribute.node.AddText("TypeFlags", flags);
    objects.Connect(attribute.id, owner);
}

std::vector<double> RestOf(const headless::Scene& scene, const ExportedModel& model,
                           const ExportedMotion& pose) {
    const JointChannels channels(scene, *model.object, pose, {0.0}, false, {}, {});
    std::vector<double> rest;
    for (std::size_t joint = 0; joint < pose.Joints().size(); ++joint)
        for (std::size_t channel = 0; channel < JointChannels::kCount; ++channel)
            rest.push_back(channels.RangeOf(joint, channel).first);
    return rest;
}

void AddPose(FbxObjects& objects, std::string_view name, const std::vector<FbxPlaced>& placed) {
    const FbxObjects::Object pose = objects.Add("Pose", "Pose", name, "BindPose");
    pose.node.AddText("Type", "BindPose");
    pose.node.AddInt("Version", 100);
    pose.node.AddInt("NbPoseNodes", static_cast<std::int32_t>(placed.size()));
    for (const FbxPlaced& object : placed) {
        FbxNode& entry = pose.node.Add("PoseNode");
        entry.Add("Node").Long(object.id);
        entry.Add("Matrix").Numbers(std::span<const double>(FbxMatrixOf(object.global)));
    }
}

}  // namespace

FbxSkeleton AddFbxSkeleton(FbxObjects& objects, const headless::Scene& scene,
                           const ExportedModel& model, const ExportedMotion& pose,
                           const Options& options, Notes& notes) {
    const std::vector<Joint>& joints = pose.Joints();
    const std::string name = text::EncodeUtf8(headless::View(model.object->name));
    const Transform turn = pose.Turn().value_or(Transform());
    const std::array<double, 3> angles = headless::AnglesOf(turn.axes);
    const std::int64_t holder =
        AddFbxModel(objects, name, "Null", 0, {0.0, 0.0, 0.0, angles[0], angles[1], angles[2]});
    AddAttribute(objects, name, "Null", "Null", holder);
    std::vector<FbxPlaced> placed = {{holder, turn}};

    FbxSkeleton skeleton;
    skeleton.rest = RestOf(scene, model, pose);
    std::vector<Transform> globals(joints.size());
    pose.BaseLocals(globals);
    pose.TurnTopJoints(globals);
    ComputeGlobals(joints, globals, globals);
    for (std::size_t joint = 0; joint < joints.size(); ++joint) {
        const std::size_t parent = joints[joint].parent;
        const std::string jointName = text::EncodeUtf8(joints[joint].name);
        std::array<double, 6> values{};
        std::copy_n(skeleton.rest.begin() + static_cast<std::ptrdiff_t>(values.size() * joint),
                    values.size(), values.begin());
        const std::int64_t owner = parent == Joint::kNoParent ? holder : skeleton.joints[parent];
        skeleton.joints.push_back(AddFbxModel(objects, jointName, "LimbNode", owner, values));
        AddAttribute(objects, jointName, "LimbNode", "Skeleton", skeleton.joints.back());
        placed.push_back({skeleton.joints.back(), globals[joint]});
    }
    if (options.mesh) AddFbxBody(objects, name, pose, placed, notes);
    AddPose(objects, name, placed);
    return skeleton;
}

}  // namespace exporters
