// Implements the host's classes for parameters, kinematic states, curves and properties.
#include "headless/operations.h"
#include "headless/session_state.h"
#include "headless/text.h"
#include "host/parameter.h"

namespace Zelk {

using headless::Channel;
using headless::Editor;
using headless::Fails;
using headless::kChannelNames;
using headless::kKinematicChannelCount;
using headless::Operation;
using headless::Referent;
using headless::SceneEditor;
using headless::View;
using Kind = Referent::Kind;
namespace part = headless::part;

namespace {

constexpr std::uint32_t ChannelPart(std::size_t channel) {
    return part::kFirstChannel + static_cast<std::uint32_t>(channel);
}

constexpr std::uint32_t kLengthPart = ChannelPart(static_cast<std::size_t>(Channel::BoneLength));

// The value of the parameter that `ref` refers to: a number, or a reference to the parameter's
// curve. `referent` is what `ref` refers to. The result is empty if `ref` does not refer to a
// parameter, or if the parameter has no value.
CValue OwnValue(const SceneEditor& editor, const CRef& ref, const Referent& referent) {
    if (referent.kind == Kind::Channel) return editor.ValueOf(*referent.object, referent.channel);
    if (referent.kind == Kind::AnimEnd) return referent.action->animEnd;
    if (referent.kind == Kind::CurveParameter) return CRef(ref.Object(), ref.Part() + 1);
    return CValue();
}

// Finds the parameter called `name` among the members of what `ref` refers to. If `ref` itself
// refers to a parameter called `name`, the result is `ref`. The result is empty if there is no such
// parameter.
CRef Member(const SceneEditor& editor, const CRef& ref, const Referent& referent,
            std::wstring_view name) {
    switch (referent.kind) {
        case Kind::LocalState:
            for (std::size_t index = 0; index < kKinematicChannelCount; ++index)
                if (kChannelNames[index] == name) return CRef(ref.Object(), ChannelPart(index));
            return CRef();
        case Kind::Object: {
            const CRef length(ref.Object(), kLengthPart);
            const bool isLength = name == kChannelNames.back();
            return isLength && editor.Resolve(length).kind == Kind::Channel ? length : CRef();
        }
        case Kind::Action:
            return name == headless::kAnimEndName ? CRef(ref.Object(), part::kAnimEnd) : CRef();
        case Kind::Channel:
        case Kind::AnimEnd:
        case Kind::CurveParameter:
            return editor.HasName(referent, name) ? ref : CRef();
        default:
            return CRef();
    }
}

}  // namespace

// A session does not play motions, so the functions below ignore the time that they are given.

CRefArray ProjectItem::GetParameters() const {
    CRefArray parameters;
    if (Fails(Operation::GetParameters)) return parameters;
    const SceneEditor editor = Editor();
    const Referent referent = editor.Resolve(ref_);
    const auto add = [&](std::uint32_t partNumber) {
        parameters.Add(CRef(ref_.Object(), partNumber));
    };
    if (referent.kind == Kind::LocalState)
        for (std::size_t index = 0; index < kKinematicChannelCount; ++index)
            add(ChannelPart(index));
    if (referent.kind == Kind::Object && referent.object->type == headless::ObjectType::ChainBone)
        add(kLengthPart);
    if (referent.kind == Kind::Action) add(part::kAnimEnd);
    if (referent.kind == Kind::Property)
        for (std::uint32_t index = 0; index < referent.property->curves.size(); ++index)
            add(part::kFirstCurveParameter + 2 * index);
    return parameters;
}

CStatus ProjectItem::PutParameterValue(const CString& name, double value, double) {
    if (Fails(Operation::PutParameterValue)) return status::kFail;
    SceneEditor editor = Editor();
    const Referent whole = editor.Resolve(ref_);
    if (whole.kind == Kind::None) return status::kFail;
    const Referent member = editor.Resolve(Member(editor, ref_, whole, View(name)));
    if (member.kind == Kind::Channel) return editor.PutValue(*member.object, member.channel, value);
    if (member.kind != Kind::AnimEnd) return status::kInvalidArgument;
    member.action->animEnd = value;
    return status::kOk;
}

CValue Parameter::GetValue(double) const {
    if (Fails(Operation::GetValue)) return CValue();
    const SceneEditor editor = Editor();
    return OwnValue(editor, ref_, editor.Resolve(ref_));
}

CValue Parameter::GetParameterValue(const CString& name, double) const {
    if (Fails(Operation::GetParameterValue)) return CValue();
    const SceneEditor editor = Editor();
    const CRef member = Member(editor, ref_, editor.Resolve(ref_), View(name));
    return OwnValue(editor, member, editor.Resolve(member));
}

CStatus KinematicState::PutTransform(const MATH::CTransformation& transformation, double) {
    if (Fails(Operation::PutTransform)) return status::kFail;
    SceneEditor editor = Editor();
    const Referent referent = editor.Resolve(ref_);
    if (referent.kind != Kind::LocalState) return status::kFail;
    return editor.PutTranslation(*referent.object, transformation.GetTranslation());
}

KinematicState Kinematics::GetLocal() const {
    if (Fails(Operation::GetLocal)) return KinematicState();
    if (Editor().Resolve(ref_).kind != Kind::Kinematics) return KinematicState();
    return KinematicState(CRef(ref_.Object(), part::kLocalState));
}

CStatus FCurve::PutInterpolation(zkFCurveInterpolation interpolation) {
    if (Fails(Operation::PutInterpolation)) return status::kFail;
    const Referent referent = Editor().Resolve(ref_);
    if (referent.kind != Kind::Curve) return status::kFail;
    referent.property->curves[referent.index].curve.interpolation = interpolation;
    return status::kOk;
}

CStatus FCurve::SetKeys(const CTimeArray& times, const CValueArray& values, bool keepExisting) {
    if (Fails(Operation::SetKeys)) return status::kFail;
    SceneEditor editor = Editor();
    const Referent referent = editor.Resolve(ref_);
    if (referent.kind != Kind::Curve) return status::kFail;
    return editor.SetKeys(referent.property->curves[referent.index].curve, times, values,
                          keepExisting);
}

CStatus CustomProperty::AddFCurveParameter(const CString& name, Parameter& parameter) {
    if (Fails(Operation::AddFCurveParameter)) return status::kFail;
    const Referent referent = Editor().Resolve(ref_);
    if (referent.kind != Kind::Property) return status::kFail;
    auto& curves = referent.property->curves;
    for (const auto& curve : curves)
        if (curve.name == name) return status::kInvalidArgument;
    if (name.IsEmpty()) return status::kInvalidArgument;
    const auto index = static_cast<std::uint32_t>(curves.size());
    curves.push_back({name, {}});
    parameter = Parameter(CRef(ref_.Object(), part::kFirstCurveParameter + 2 * index));
    return status::kOk;
}

}  // namespace Zelk
