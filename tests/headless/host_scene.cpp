#include "tests/headless/host_scene.h"

namespace host_test {

Zelk::CRefArray Refs(std::initializer_list<Zelk::CBase> handles) {
    Zelk::CRefArray refs;
    for (const Zelk::CBase& handle : handles)
        refs.Add(handle.GetRef());
    return refs;
}

Zelk::Model SceneRoot() {
    return Zelk::Application().GetActiveSceneRoot();
}

Zelk::Model AddModel(const wchar_t* name, Zelk3DObject parent, const Zelk::CRefArray& objects) {
    Zelk::Model model;
    parent.AddModel(objects, name, model);
    return model;
}

Zelk::Null AddNull(Zelk3DObject parent, const wchar_t* name) {
    Zelk::Null null;
    parent.AddNull(name, null);
    return null;
}

Zelk::ChainRoot AddChain(Zelk3DObject parent, Zelk::MATH::CVector3 root, Zelk::MATH::CVector3 end,
                         const wchar_t* name, Zelk::MATH::CVector3 normal) {
    Zelk::ChainRoot chain;
    parent.Add2DChain(root, end, normal, Zelk::zk2DChainNormalAlign, name, chain);
    return chain;
}

Zelk::ChainBone AddBone(Zelk::ChainRoot chain, Zelk::MATH::CVector3 end, const wchar_t* name) {
    Zelk::ChainBone bone;
    chain.AddBone(end, Zelk::zkChainBonePin, name, bone);
    return bone;
}

Zelk::ChainBone BoneOf(const Zelk::ChainRoot& chain, std::uint32_t index) {
    return Zelk::ChainBone(chain.GetBones()[index]);
}

Zelk::Group AddGroup(Zelk::Model model, const wchar_t* name, const Zelk::CRefArray& members) {
    Zelk::Group group;
    model.AddGroup(members, name, false, group);
    return group;
}

Zelk::CustomProperty AddProperty(Zelk::SceneItem owner, const wchar_t* name) {
    Zelk::CustomProperty property;
    owner.AddCustomProperty(name, false, property);
    return property;
}

double Get(const Zelk3DObject& object, const wchar_t* channel) {
    if (Zelk::CString(channel) == Zelk::CString(L"length"))
        return Zelk::Parameter(object.GetParameters().GetItem(channel))
            .GetValue(Zelk::kCurrentTime)
            .AsDouble();
    return object.GetKinematics()
        .GetLocal()
        .GetParameterValue(channel, Zelk::kCurrentTime)
        .AsDouble();
}

Zelk::CStatus Put(const Zelk3DObject& object, const wchar_t* channel, double value) {
    if (Zelk::CString(channel) == Zelk::CString(L"length"))
        return Zelk3DObject(object).PutParameterValue(channel, value, Zelk::kCurrentTime);
    return object.GetKinematics().GetLocal().PutParameterValue(channel, value, Zelk::kCurrentTime);
}

Zelk::CStatus Place(const Zelk3DObject& object, double x, double y, double z) {
    Zelk::MATH::CTransformation transform;
    transform.SetTranslationFromValues(x, y, z);
    return object.GetKinematics().GetLocal().PutTransform(transform, Zelk::kCurrentTime);
}

Scratch AddScratch(Zelk::SceneItem owner) {
    Scratch scratch;
    owner.AddCustomProperty(L"Scratch", false, scratch.property);
    scratch.property.AddFCurveParameter(L"fcurve", scratch.parameter);
    scratch.curve = Zelk::FCurve(scratch.parameter.GetValue(Zelk::kCurrentTime).AsRef());
    return scratch;
}

Zelk::CStatus SetKeys(Zelk::FCurve curve, const std::vector<double>& times,
                      const std::vector<double>& values, bool keepExisting) {
    Zelk::CTimeArray timeArray(static_cast<std::uint32_t>(times.size()));
    for (std::uint32_t index = 0; index < timeArray.GetCount(); ++index)
        timeArray[index] = times[index];
    Zelk::CValueArray valueArray(static_cast<std::uint32_t>(values.size()));
    for (std::uint32_t index = 0; index < valueArray.GetCount(); ++index)
        valueArray[index] = values[index];
    return curve.SetKeys(timeArray, valueArray, keepExisting);
}

Zelk::ActionSource AddAction(Zelk::Model model, const wchar_t* name,
                             const std::vector<Item>& items) {
    Zelk::ActionSource action = model.AddActionSource(name);
    const Scratch scratch = AddScratch(model);
    Zelk::FCurve curve = scratch.curve;
    curve.PutInterpolation(Zelk::zkLinearInterpolation);
    for (const Item& item : items) {
        if (item.times.empty()) {
            action.AddSourceItem(item.target, item.values.at(0), item.isActive);
            continue;
        }
        SetKeys(curve, item.times, item.values);
        action.AddSourceItem(item.target, curve.GetRef(), item.isActive);
    }
    Delete(scratch.property.GetFullName().GetWideString());
    return action;
}

std::int32_t Command(const wchar_t* command, const std::vector<Zelk::CValue>& arguments) {
    Zelk::CValueArray array(static_cast<std::uint32_t>(arguments.size()));
    for (std::uint32_t index = 0; index < array.GetCount(); ++index)
        array[index] = arguments[index];
    Zelk::CValue result;
    return Zelk::Application().ExecuteCommand(command, array, result).GetCode();
}

}  // namespace host_test
