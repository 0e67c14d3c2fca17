// Makes a scene through the functions of host/, as a plug-in does.
#pragma once

#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <vector>

#include "headless/session.h"
#include "host/application.h"

namespace host_test {

// Each test starts with an empty scene.
class HostScene : public testing::Test {
  protected:
    void SetUp() override { headless::Session::Current().Reset(); }
};

inline const headless::Scene& Scene() {
    return headless::Session::Current().GetScene();
}
inline std::wstring Wide(const Zelk::CString& text) {
    return {text.GetWideString(), text.Length()};
}
inline std::wstring NameOf(const ZKObject& object) {
    return Wide(object.GetName());
}
inline std::wstring FullNameOf(const ZKObject& object) {
    return Wide(object.GetFullName());
}
// The record that the handle refers to. The handle must be valid.
inline const headless::Object& RecordOf(const Zelk::CBase& handle) {
    return *Scene().FindObject(handle.GetRef().Object());
}
inline const headless::ActionSource& RecordOf(const Zelk::ActionSource& action) {
    return *Scene().FindAction(action.GetRef().Object());
}

Zelk::CRefArray Refs(std::initializer_list<Zelk::CBase> handles);
// Each function below returns the handle of what it added, or an empty one if the host refused.
Zelk::Model SceneRoot();
Zelk::Model AddModel(const wchar_t* name, Zelk3DObject parent = SceneRoot(),
                     const Zelk::CRefArray& objects = {});
Zelk::Null AddNull(Zelk3DObject parent, const wchar_t* name);
Zelk::ChainRoot AddChain(Zelk3DObject parent, Zelk::MATH::CVector3 root, Zelk::MATH::CVector3 end,
                         const wchar_t* name = L"Root",
                         Zelk::MATH::CVector3 normal = {0.0, 0.0, 1.0});
Zelk::ChainBone AddBone(Zelk::ChainRoot chain, Zelk::MATH::CVector3 end,
                        const wchar_t* name = L"Bone");
Zelk::ChainBone BoneOf(const Zelk::ChainRoot& chain, std::uint32_t index);
Zelk::Group AddGroup(Zelk::Model model, const wchar_t* name, const Zelk::CRefArray& members);
Zelk::CustomProperty AddProperty(Zelk::SceneItem owner, const wchar_t* name);

double Get(const Zelk3DObject& object, const wchar_t* channel);
// `channel` is a channel of the local transform, or "length".
Zelk::CStatus Put(const Zelk3DObject& object, const wchar_t* channel, double value);
Zelk::CStatus Place(const Zelk3DObject& object, double x, double y, double z);

// A curve on a new property, which is called "Scratch".
struct Scratch {
    Zelk::CustomProperty property;
    Zelk::Parameter parameter;
    Zelk::FCurve curve;
};
Scratch AddScratch(Zelk::SceneItem owner);
Zelk::CStatus SetKeys(Zelk::FCurve curve, const std::vector<double>& times,
                      const std::vector<double>& values, bool keepExisting = false);

// An action of these curves and static values. It is made with a scratch curve, which is deleted
// afterwards.
struct Item {
    const wchar_t* target;
    std::vector<double> times;   // empty: a static value
    std::vector<double> values;  // for a static value, only that value
    bool isActive = true;
};
Zelk::ActionSource AddAction(Zelk::Model model, const wchar_t* name,
                             const std::vector<Item>& items);

// Runs the command and returns its status.
std::int32_t Command(const wchar_t* command, const std::vector<Zelk::CValue>& arguments);
inline std::int32_t Delete(const wchar_t* name) {
    return Command(L"DeleteObj", {Zelk::CString(name)});
}
inline std::int32_t Apply(const Zelk::ActionSource& action, const Zelk::Model& model) {
    return Command(L"ApplyAction", {action.GetRef(), model.GetRef()});
}
inline std::int32_t AddClip(const Zelk::Model& model, const Zelk::ActionSource& motion) {
    return Command(L"AddClip", {model.GetRef(), motion.GetRef(), {}, {}, {}, {}});
}

}  // namespace host_test
