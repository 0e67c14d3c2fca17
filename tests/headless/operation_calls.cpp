#include "tests/headless/operation_calls.h"

namespace host_test {

namespace {

// Whether the session has recorded an event of the bar.
template <class Put>
bool Shows(Put put) {
    const std::size_t before = headless::Session::Current().Bar().size();
    put();
    return headless::Session::Current().Bar().size() != before;
}

bool Logs(const std::function<void()>& log) {
    const std::size_t before = headless::Session::Current().Log().size();
    log();
    return headless::Session::Current().Log().size() != before;
}

bool Ran(const wchar_t* command, const std::vector<Zelk::CValue>& arguments) {
    return Command(command, arguments) == Zelk::status::kOk;
}

}  // namespace

void Handles::Make() {
    headless::Session::Current().SetInteractive(true);
    model = AddModel(L"Skel");
    null = AddNull(model, L"Hips");
    chain = AddChain(null, {0, 0, 0}, {1, 0, 0});
    bone = AddBone(chain, {2, 0, 0}, L"Arm");
    kinematics = null.GetKinematics();
    local = kinematics.GetLocal();
    position = Zelk::Parameter(local.GetParameters()[0]);
    const Scratch scratch = AddScratch(null);
    property = scratch.property;
    curveParameter = scratch.parameter;
    curve = scratch.curve;
    action =
        AddAction(model, L"Walk",
                  {{L"Hips.kine.local.posx", {}, {5}}, {L"Hips.kine.local.posy", {1, 2}, {5, 6}}});
    group = AddGroup(model, L"All", Refs({null, bone}));
    Zelk::UIToolkit::Create(toolkit);
    bar = toolkit.GetProgressBar();
    bar.PutValue(1);
}

const std::vector<OperationCall>& OperationCallsOfAllKinds() {
    using Zelk::status::kOk;
    static const std::vector<OperationCall> calls = {
        {"GetActiveSceneRoot",
         [](Handles&) { return Zelk::Application().GetActiveSceneRoot().IsValid(); }, true},
        {"ExecuteCommand",
         [](Handles& on) {
             return Ran(L"AddClip", {on.model.GetRef(), on.action.GetRef()});
         }},
        {"AddClip",
         [](Handles& on) {
             return Ran(L"AddClip", {on.model.GetRef(), on.action.GetRef()});
         }},
        {"ApplyAction",
         [](Handles& on) {
             return Ran(L"ApplyAction", {on.action.GetRef(), on.model.GetRef()});
         }},
        {"DeleteObj", [](Handles& on) { return Ran(L"DeleteObj", {on.null.GetFullName()}); }},
        {"LogMessage",
         [](Handles&) {
             return Logs([] { Zelk::Application().LogMessage(L"a", Zelk::zkInfoSeverity); });
         },
         true},
        {"LogMessage",
         [](Handles&) { return Logs([] { Zelk::AutomationApplication().LogMessage(L"a"); }); },
         true},
        {"GetInteractive",
         [](Handles&) {
             std::int16_t interactive = 7;
             Zelk::AutomationApplication().GetInteractive(interactive);
             return interactive != 7;
         },
         true},
        {"Create",
         [](Handles&) {
             Zelk::UIToolkit toolkit;
             const bool made = Zelk::UIToolkit::Create(toolkit).Succeeded();
             EXPECT_EQ(toolkit.IsValid(), made);
             return made;
         },
         true},
        {"GetProgressBar", [](Handles& on) { return on.toolkit.GetProgressBar().IsValid(); }},
        {"PutMinimum", [](Handles& on) { return Shows([&] { on.bar.PutMinimum(3); }); }},
        {"PutMaximum", [](Handles& on) { return Shows([&] { on.bar.PutMaximum(3); }); }},
        {"PutStep", [](Handles& on) { return Shows([&] { on.bar.PutStep(3); }); }},
        {"PutValue", [](Handles& on) { return Shows([&] { on.bar.PutValue(3); }); }},
        {"PutCaption", [](Handles& on) { return Shows([&] { on.bar.PutCaption(L"a"); }); }},
        {"PutVisible", [](Handles& on) { return Shows([&] { on.bar.PutVisible(-1); }); }},
        {"GetCancelPressed",
         [](Handles& on) {
             std::int16_t pressed = 7;
             on.bar.GetCancelPressed(pressed);
             return pressed != 7;
         }},
        {"GetName", [](Handles& on) { return !on.null.GetName().IsEmpty(); }},
        {"PutName",
         [](Handles& on) {
             on.null.PutName(L"Pelvis");
             return NameOf(on.null) == L"Pelvis";
         }},
        {"PutName",
         [](Handles& on) {
             on.group.PutName(L"Some");
             return NameOf(on.group) == L"Some";
         }},
        {"GetFullName", [](Handles& on) { return !on.position.GetFullName().IsEmpty(); }},
        {"GetParent", [](Handles& on) { return on.null.GetParent().IsValid(); }},
        {"GetModel", [](Handles& on) { return on.property.GetModel().IsValid(); }},
        {"GetParameters", [](Handles& on) { return on.local.GetParameters().GetCount() != 0; }},
        {"PutParameterValue",
         [](Handles& on) { return on.local.PutParameterValue(L"rotx", 9, 0).Succeeded(); }},
        {"PutParameterValue",
         [](Handles& on) { return on.bone.PutParameterValue(L"length", 9, 0).Succeeded(); }},
        {"PutParameterValue",
         [](Handles& on) { return on.action.PutParameterValue(L"AnimEnd", 9, 0).Succeeded(); }},
        {"GetItem",
         [](Handles& on) { return !(Refs({on.null}).GetItem(L"Hips") == Zelk::CRef()); }},
        {"GetValue",
         [](Handles& on) {
             return on.position.GetValue(0).GetType() != Zelk::CValue::Type::Empty;
         }},
        {"GetValue",
         [](Handles& on) { return !(on.curveParameter.GetValue(0).AsRef() == Zelk::CRef()); }},
        {"GetParameterValue",
         [](Handles& on) {
             return on.local.GetParameterValue(L"posx", 0).GetType() != Zelk::CValue::Type::Empty;
         }},
        {"PutTransform",
         [](Handles& on) {
             Zelk::MATH::CTransformation transform;
             transform.SetTranslationFromValues(1, 2, 3);
             return on.local.PutTransform(transform, 0).Succeeded();
         }},
        {"GetLocal", [](Handles& on) { return on.kinematics.GetLocal().IsValid(); }},
        {"GetKinematics", [](Handles& on) { return on.bone.GetKinematics().IsValid(); }},
        {"PutInterpolation",
         [](Handles& on) {
             return on.curve.PutInterpolation(Zelk::zkLinearInterpolation).Succeeded();
         }},
        {"SetKeys",
         [](Handles& on) {
             return SetKeys(on.curve, {1, 2}, {3, 4}).Succeeded();
         }},
        {"AddFCurveParameter",
         [](Handles& on) {
             Zelk::Parameter parameter;
             const bool made = on.property.AddFCurveParameter(L"second", parameter).Succeeded();
             EXPECT_EQ(parameter.IsValid(), made);
             return made;
         }},
        {"AddCustomProperty", [](Handles& on) { return AddProperty(on.null, L"Set").IsValid(); }},
        {"AddNull", [](Handles& on) { return AddNull(on.null, L"Leg").IsValid(); }},
        {"AddModel", [](Handles& on) { return AddModel(L"New", on.null, {}).IsValid(); }},
        {"AddModel",
         [](Handles& on) { return AddModel(L"New", SceneRoot(), Refs({on.null})).IsValid(); }},
        {"Add2DChain",
         [](Handles& on) {
             return AddChain(on.null, {}, {0, 1, 0}).IsValid();
         }},
        {"AddChild", [](Handles& on) { return on.model.AddChild(Refs({on.chain})).Succeeded(); }},
        {"GetEffector", [](Handles& on) { return on.bone.GetEffector().IsValid(); }},
        {"GetBones", [](Handles& on) { return on.chain.GetBones().GetCount() != 0; }},
        {"AddBone",
         [](Handles& on) {
             return AddBone(on.chain, {3, 0, 0}).IsValid();
         }},
        {"AddActionSource", [](Handles& on) { return on.model.AddActionSource(L"Run").IsValid(); }},
        {"AddSourceItem",
         [](Handles& on) { return on.action.AddSourceItem(L"Hips.x", 1.0, true).IsValid(); }},
        {"AddSourceItem",
         [](Handles& on) {
             return on.action.AddSourceItem(L"Hips.x", on.curve.GetRef(), true).IsValid();
         }},
        {"AddGroup",
         [](Handles& on) { return AddGroup(on.model, L"Some", Refs({on.null})).IsValid(); }},
    };
    return calls;
}

}  // namespace host_test
