#include "bridge/array_scene.h"

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <new>

#include "bridge/euler_curves.h"
#include "host/application.h"
#include "take/session_lock.h"
#include "text/wide_text.h"

namespace bridge {
namespace {

constexpr const wchar_t* kPositions[] = {L"posx", L"posy", L"posz"};
constexpr const wchar_t* kRotations[] = {L"rotx", L"roty", L"rotz"};
constexpr double kUnturned[] = {0.0, 0.0, 0.0, 1.0};

// The host only refuses these operations when memory runs out.
void Require(const Zelk::CStatus& status) {
    if (!status.Succeeded()) throw std::bad_alloc();
}

void RequireValid(const Zelk::CBase& handle) {
    if (!handle.IsValid()) throw std::bad_alloc();
}

class SceneBuilder {
  public:
    explicit SceneBuilder(const ArrayMotion& motion)
        : motion_(motion),
          joints_(motion.skeleton.size()),
          frames_(motion.frames.size()),
          times_(static_cast<std::uint32_t>(frames_)),
          values_(static_cast<std::uint32_t>(frames_)) {
        std::copy(motion.frames.begin(), motion.frames.end(), &times_[0]);
    }

    void Build() {
        Zelk::Model root = Zelk::Application().GetActiveSceneRoot();
        Require(root.AddModel({}, Name(motion_.name), model_));
        AddNulls();
        basePose_ = AddAction(L"_BasePose", 0.0);
        for (const Zelk::Null& null : nulls_)
            AddBasePose(null);
        if (motion_.secondsPerFrame > 0.0) AddMotion();
        Run(L"ApplyAction", {basePose_.GetRef(), model_.GetRef()});
    }

  private:
    static Zelk::CString Name(const std::string& utf8) {
        return Zelk::CString(text::DecodeUtf8(utf8).c_str());
    }

    static void Run(const wchar_t* command, std::initializer_list<Zelk::CValue> arguments) {
        Zelk::CValueArray array(static_cast<std::uint32_t>(arguments.size()));
        std::uint32_t index = 0;
        for (const Zelk::CValue& argument : arguments)
            array[index++] = argument;
        Zelk::CValue result;
        Require(Zelk::Application().ExecuteCommand(command, array, result));
    }

    static Zelk::CString TargetOf(const Zelk3DObject& object, const wchar_t* channel) {
        Zelk::CString target = object.GetName();
        target += Zelk::CString(L".kine.local.");
        target += Zelk::CString(channel);
        return target;
    }

    void AddNulls() {
        nulls_.reserve(joints_);
        for (std::size_t joint = 0; joint < joints_; ++joint) {
            const exporters::FileJoint& described = motion_.skeleton[joint];
            Zelk3DObject parent = model_;
            if (described.parent != exporters::FileJoint::kNoParent)
                parent = nulls_[described.parent];
            Zelk::Null null;
            Require(parent.AddNull(Name(described.name), null));
            Zelk::MATH::CTransformation transform;
            const std::array<double, 3>& offset = motion_.offsets[joint];
            transform.SetTranslationFromValues(offset[0], offset[1], offset[2]);
            Require(null.GetKinematics().GetLocal().PutTransform(transform, Zelk::kCurrentTime));
            nulls_.push_back(null);
        }
    }

    Zelk::ActionSource AddAction(const wchar_t* ending, double seconds) {
        Zelk::CString name = model_.GetName();
        name += Zelk::CString(ending);
        Zelk::ActionSource action = model_.AddActionSource(name);
        RequireValid(action);
        Require(action.PutParameterValue(L"AnimEnd", seconds, Zelk::kCurrentTime));
        return action;
    }

    void AddBasePose(const Zelk::Null& null) {
        const Zelk::KinematicState local = null.GetKinematics().GetLocal();
        for (const auto& names : {kPositions, kRotations})
            for (std::size_t axis = 0; axis < 3; ++axis) {
                const double value =
                    local.GetParameterValue(names[axis], Zelk::kCurrentTime).AsDouble();
                RequireValid(basePose_.AddSourceItem(TargetOf(null, names[axis]), value, true));
            }
    }

    void AddMotion() {
        action_ = AddAction(L"_Motion", motion_.secondsPerFrame * motion_.frames.back());
        Zelk::CustomProperty property;
        Require(model_.AddCustomProperty(L"FcurvePset", false, property));
        Zelk::Parameter parameter;
        Require(property.AddFCurveParameter(L"fcurve", parameter));
        curve_ = Zelk::FCurve(parameter.GetValue(Zelk::kCurrentTime).AsRef());
        Require(curve_.PutInterpolation(Zelk::zkLinearInterpolation));
        for (std::size_t joint = 0; joint < joints_; ++joint)
            AddCurves(joint);
        Run(L"DeleteObj", {property.GetFullName()});
        Run(L"ApplyAction", {action_.GetRef(), model_.GetRef()});
    }

    // A motion needs at least one curve, so the first joint always has curves of its rotation.
    void AddCurves(std::size_t joint) {
        const double* const positions = motion_.positions + 3 * joint;
        if (IsMoved(joint))
            for (std::size_t axis = 0; axis < 3; ++axis)
                AddCurve(joint, kPositions[axis], positions + axis, 3 * joints_);
        if (joint > 0 && !IsTurned(joint)) return;
        const AngleCurves curves =
            AngleCurvesOf(motion_.quaternions + 4 * joint, frames_, 4 * joints_);
        for (std::size_t axis = 0; axis < 3; ++axis)
            AddCurve(joint, kRotations[axis], curves[axis].data(), 1);
    }

    bool IsMoved(std::size_t joint) const {
        for (std::size_t frame = 0; frame < frames_; ++frame)
            if (!std::equal(motion_.offsets[joint].begin(), motion_.offsets[joint].end(),
                            motion_.positions + 3 * (frame * joints_ + joint)))
                return true;
        return false;
    }

    bool IsTurned(std::size_t joint) const {
        for (std::size_t frame = 0; frame < frames_; ++frame)
            if (!std::equal(kUnturned, kUnturned + 4,
                            motion_.quaternions + 4 * (frame * joints_ + joint)))
                return true;
        return false;
    }

    // `numbers` points to the value of the first frame; each frame is `step` numbers after the one
    // before.
    void AddCurve(std::size_t joint, const wchar_t* channel, const double* numbers,
                  std::size_t step) {
        for (std::size_t frame = 0; frame < frames_; ++frame)
            values_[static_cast<std::uint32_t>(frame)] = numbers[frame * step];
        Require(curve_.SetKeys(times_, values_, false));
        RequireValid(
            action_.AddSourceItem(TargetOf(nulls_[joint], channel), curve_.GetRef(), true));
    }

    const ArrayMotion& motion_;
    std::size_t joints_;
    std::size_t frames_;
    Zelk::CTimeArray times_;
    Zelk::CValueArray values_;
    Zelk::Model model_;
    std::vector<Zelk::Null> nulls_;
    Zelk::ActionSource basePose_;
    Zelk::ActionSource action_;
    Zelk::FCurve curve_;
};

}  // namespace

// If building fails, what stands in the session is removed by the next import or build.
headless::Recording BuildScene(const ArrayMotion& motion) {
    const take::SessionLock lock;
    headless::Session& session = headless::Session::Current();
    session.Reset();
    SceneBuilder(motion).Build();
    return session.Release();
}

}  // namespace bridge
