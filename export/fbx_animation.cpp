#include "export/fbx_animation.h"

#include <array>
#include <cstddef>
#include <span>
#include <string_view>

namespace exporters {
namespace {

constexpr std::size_t kAxes = 3;
constexpr std::array<std::string_view, kAxes> kAxisProperties = {"d|X", "d|Y", "d|Z"};
constexpr std::int32_t kKeyVersion = 4009;
// How a curve goes from one key to the next: linear (4). The other bits concern tangents, which a
// line does not use, and are those that programs write with it.
constexpr std::int32_t kLinear = 0x4 | 0x100 | 0x2000 | 0x4000;
// Slopes and weights of the tangents, as programs write them if there are none. The third number
// holds two weights of a third, packed into 32 bits.
constexpr std::array<float, 4> kTangents = {0.0F, 0.0F, 9.419963346924634e-30F, 0.0F};

std::int64_t AddStack(FbxObjects& objects, const FbxMotion& motion) {
    const FbxObjects::Object stack = objects.Add("AnimationStack", "AnimStack", motion.Name(), "");
    FbxNode& properties = stack.node.Add("Properties70");
    for (const char* const name : {"LocalStart", "LocalStop", "ReferenceStart", "ReferenceStop"}) {
        const bool isStop = std::string_view(name).ends_with("Stop");
        AddFbxTime(properties, name, isStop ? motion.Stop() : 0);
    }
    return stack.id;
}

std::int64_t AddLayer(FbxObjects& objects, std::int64_t stack) {
    const FbxObjects::Object layer = objects.Add("AnimationLayer", "AnimLayer", "BaseLayer", "");
    layer.node.CloseList();
    objects.Connect(layer.id, stack);
    return layer.id;
}

void AddCurve(FbxObjects& objects, const FbxCurve& curve, std::int64_t curveNode) {
    const FbxObjects::Object object = objects.Add("AnimationCurve", "AnimCurve", "", "");
    object.node.Add("Default").Double(curve.rest);
    object.node.AddInt("KeyVer", kKeyVersion);
    object.node.Add("KeyTime").Array(curve.times);
    object.node.Add("KeyValueFloat").Array(curve.values);
    const auto count = static_cast<std::int32_t>(curve.times.count);
    object.node.Add("KeyAttrFlags").Numbers(std::span<const std::int32_t>(&kLinear, 1));
    object.node.Add("KeyAttrDataFloat").Numbers(std::span<const float>(kTangents));
    object.node.Add("KeyAttrRefCount").Numbers(std::span<const std::int32_t>(&count, 1));
    objects.Connect(object.id, curveNode, kAxisProperties[curve.channel % kAxes]);
}

// Adds the curves of a joint's position or of its angles.
void AddCurves(FbxObjects& objects, std::span<const FbxCurve> curves, std::span<const double> rest,
               std::int64_t joint, std::int64_t layer) {
    const bool isPosition = curves.front().channel < kAxes;
    const FbxObjects::Object node =
        objects.Add("AnimationCurveNode", "AnimCurveNode", isPosition ? "T" : "R", "");
    FbxNode& properties = node.node.Add("Properties70");
    for (std::size_t axis = 0; axis < kAxes; ++axis)
        AddFbxProperty(properties, kAxisProperties[axis], "Number", "", "A").Double(rest[axis]);
    objects.Connect(node.id, joint, isPosition ? "Lcl Translation" : "Lcl Rotation");
    objects.Connect(node.id, layer);
    for (const FbxCurve& curve : curves)
        AddCurve(objects, curve, node.id);
}

}  // namespace

void AddFbxAnimation(FbxObjects& objects, const FbxMotion& motion, const FbxSkeleton& skeleton) {
    const std::int64_t stack = AddStack(objects, motion);
    const std::int64_t layer = AddLayer(objects, stack);
    const std::span<const FbxCurve> curves = motion.Curves();
    const auto groupOf = [](const FbxCurve& curve) {
        return (JointChannels::kCount * curve.joint + curve.channel) / kAxes;
    };
    for (std::size_t first = 0, end = 0; first < curves.size(); first = end) {
        const std::size_t group = groupOf(curves[first]);
        while (end < curves.size() && groupOf(curves[end]) == group)
            ++end;
        AddCurves(objects, curves.subspan(first, end - first),
                  std::span(skeleton.rest).subspan(kAxes * group, kAxes),
                  skeleton.joints[curves[first].joint], layer);
    }
}

}  // namespace exporters
