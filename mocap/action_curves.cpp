// Adds the keys to the motion as fcurves, and the parameter values of new objects to the base pose.
#include "host/application.h"
#include "mocap/mocap_import_base.h"
#include "mocap/scene_helpers.h"

namespace {

constexpr const wchar_t* kBoneLengthName = L"bone.length";

// Indexed by channel type. Type 0 has no parameter.
constexpr const wchar_t* kParameterNames[] = {nullptr, L"posx", L"posy", L"posz",
                                              L"rotx", L"roty", L"rotz", kBoneLengthName};

Zelk::Parameter FindParameter(const Zelk3DObject& object, const Zelk::CString& name) {
    if (name == Zelk::CString(kBoneLengthName))
        return Zelk::Parameter(object.GetParameters().GetItem(L"length"));
    return Zelk::Parameter(object.GetKinematics().GetLocal().GetParameters().GetItem(name));
}

// Returns the parameter's full name without the model's name and the dot after it.
Zelk::CString TargetName(const Zelk3DObject& object, const Zelk::Parameter& parameter) {
    const Zelk::CString fullName = parameter.GetFullName();
    const std::uint32_t skipped = object.GetModel().GetName().Length() + 1;
    return skipped < fullName.Length() ? Zelk::CString(fullName.GetWideString() + skipped)
                                       : Zelk::CString();
}

}  // namespace

Zelk::CStatus CMocapImportBase::AddFCurve(Zelk3DObject object, std::uint8_t channelType,
                                          const KeyArray& keys, Zelk::FCurve& fcurve) {
    if (channelType == kEmptySlot || channelType > kBoneLength) return Zelk::status::kUnknownName;
    const Zelk::Parameter parameter = FindParameter(object, kParameterNames[channelType]);
    if (!parameter.IsValid())
        return Fail(Zelk::status::kUnknownName, L"Failed to obtain channel parameter");

    const Zelk::CTimeArray times(keys.Times(), frameCount);
    const Zelk::CValueArray values(keys.Values(), frameCount);
    fcurve.PutInterpolation(Zelk::zkLinearInterpolation);
    const Zelk::CStatus status = fcurve.SetKeys(times, values, false);
    if (!status.Succeeded()) {
        RecordError(L"Failed to set FCurve keys");
        return status;
    }
    const auto item =
        lastMotion.AddSourceItem(TargetName(object, parameter), fcurve.GetRef(), true);
    if (!item.IsValid()) return Fail(Zelk::status::kFail, L"Failed to add FCurve to Action");
    return Zelk::status::kOk;
}

Zelk::CStatus CMocapImportBase::AddBasePose(Zelk3DObject object, const Zelk::CString& parameterName,
                                            double* value) {
    const Zelk::Parameter parameter = FindParameter(object, parameterName);
    if (!parameter.IsValid()) return Zelk::status::kUnexpected;
    const double present = parameter.GetValue(Zelk::kCurrentTime).AsDouble();
    if (value != nullptr) *value = present;
    const auto item = lastBasePose.AddSourceItem(TargetName(object, parameter), present, true);
    if (!item.IsValid()) return Fail(Zelk::status::kFail, L"Failed to add source item");
    return Zelk::status::kOk;
}

CMocapImportBase::ScratchCurve CMocapImportBase::CreateScratchCurve() {
    Zelk3DObject owner = models.empty() ? Zelk3DObject() : AnimatedObject(*models.front());
    if (!owner.IsValid()) owner = lastModel;
    ScratchCurve scratch;
    owner.AddCustomProperty(L"FcurvePset", false, scratch.property);
    Zelk::Parameter parameter;
    scratch.property.AddFCurveParameter(L"fcurve", parameter);
    scratch.fcurve = Zelk::FCurve(parameter.GetValue(Zelk::kCurrentTime).AsRef());
    scratch.fcurve.PutInterpolation(Zelk::zkLinearInterpolation);
    return scratch;
}

Zelk::CStatus CMocapImportBase::AttachCurves(MOCAPMODEL& node, Zelk::FCurve& fcurve) {
    const Zelk3DObject target = AnimatedObject(node);
    for (CHANNELS& channel : node.channels) {
        if (!IsAnimated(channel.type) || LacksKeys(channel)) continue;
        const Zelk::CStatus status = AddFCurve(target, channel.type, channel.keys, fcurve);
        if (!status.Succeeded()) {
            RecordError(L"Failed to add channel FCurve");
            return status;
        }
        // The host has the keys now. If it has copied them, they are freed here, so that a long
        // motion is not in memory twice.
        channel.keys.reset();
    }
    return Zelk::status::kOk;
}

Zelk::CStatus CMocapImportBase::FinishMotion(const ScratchCurve& scratch) {
    Zelk::Application application;
    Zelk::CValueArray arguments(1);
    arguments[0] = scratch.property.GetFullName();
    Zelk::CValue result;
    application.ExecuteCommand(L"DeleteObj", arguments, result);

    result = Zelk::CValue();
    arguments.Resize(2);
    arguments[0] = lastBasePose.GetRef();
    arguments[1] = lastModel.GetRef();
    return application.ExecuteCommand(L"ApplyAction", arguments, result);
}
