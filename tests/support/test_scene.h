// Makes a small scene in the session of the process, through the host's interface as a plug-in
// does.
#pragma once

#include <string>
#include <vector>

#include "headless/session.h"
#include "host/application.h"

struct TestCurve {
    const wchar_t* target;
    std::vector<double> times;
    std::vector<double> values;
    bool isActive = true;
};

// Starts a new session. The scene stays until the next session is started.
class TestScene {
  public:
    TestScene() { headless::Session::Current().Reset(); }

    static const headless::Scene& Get() { return headless::Session::Current().GetScene(); }

    static Zelk::Model AddModel(const wchar_t* name) {
        Zelk::Model model;
        Zelk::Application().GetActiveSceneRoot().AddModel(Zelk::CRefArray(), name, model);
        return model;
    }
    static Zelk::Null AddNull(Zelk3DObject parent, const wchar_t* name, double x, double y,
                              double z) {
        Zelk::Null null;
        parent.AddNull(name, null);
        Zelk::MATH::CTransformation transform;
        transform.SetTranslationFromValues(x, y, z);
        null.GetKinematics().GetLocal().PutTransform(transform, Zelk::kCurrentTime);
        return null;
    }
    static Zelk::ChainRoot AddChain(Zelk3DObject parent, const wchar_t* name) {
        Zelk::ChainRoot chain;
        parent.Add2DChain({0, 0, 0}, {0, 2, 0}, {0, 0, 1}, Zelk::zk2DChainNormalAlign, name, chain);
        return chain;
    }
    // Adds an action with these curves. `end` is in seconds.
    static Zelk::ActionSource AddAction(Zelk::Model model, const wchar_t* name, double end,
                                        const std::vector<TestCurve>& curves) {
        Zelk::ActionSource action = model.AddActionSource(name);
        action.PutParameterValue(L"AnimEnd", end, Zelk::kCurrentTime);
        Zelk::CustomProperty scratch;
        model.AddCustomProperty(L"Scratch", false, scratch);
        Zelk::Parameter parameter;
        scratch.AddFCurveParameter(L"fcurve", parameter);
        const Zelk::CRef ref = parameter.GetValue(Zelk::kCurrentTime).AsRef();
        Zelk::FCurve curve(ref);
        curve.PutInterpolation(Zelk::zkLinearInterpolation);
        for (const TestCurve& source : curves) {
            const auto count = static_cast<std::uint32_t>(source.times.size());
            Zelk::CTimeArray times(count);
            Zelk::CValueArray values(count);
            for (std::uint32_t index = 0; index < count; ++index) {
                times[index] = source.times[index];
                values[index] = source.values[index];
            }
            curve.SetKeys(times, values, false);
            action.AddSourceItem(source.target, ref, source.isActive);
        }
        Zelk::CValueArray arguments(1);
        arguments[0] = Zelk::CValue(scratch.GetFullName());
        Zelk::CValue ignored;
        Zelk::Application().ExecuteCommand(L"DeleteObj", arguments, ignored);
        return action;
    }
};
