#include "tests/support/bvh_probe.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <stdexcept>
#include <unordered_map>

#include "bvh/biovision_import.h"
#include "headless/evaluation.h"
#include "headless/session.h"
#include "headless/transform.h"
#include "tests/support/temp_dir.h"

namespace support {
namespace {

std::string Narrow(const Zelk::CString& text) {
    std::string out;
    for (const wchar_t* c = text.GetWideString(); *c != L'\0'; ++c)
        out += static_cast<char>(*c < 128 ? *c : '?');
    return out;
}

const headless::Scene& CurrentScene() {
    return headless::Session::Current().GetScene();
}

// The importer with its steps in the open, so that nodes and their objects can be seen together.
class Importer : public CBiovisionImport {
  public:
    ProbedImport Run(const std::wstring& path, const ImportOptions& options) {
        SetOptions(options.nulls, options.chainFromParent, options.effectorToLastBone, true);
        CIFPlugProgressBar bar;
        progressBar = &bar;
        ProbedImport import;
        if (!stringFile.ReadFile(path.c_str()))
            throw std::runtime_error("cannot read " + Narrow(path.c_str()));
        while (import.status == 0 && stringFile.GetNextString() != nullptr) {
            import.status = RunSection(import);
            Clear(false);
        }
        import.error = Narrow(GetLastError(nullptr, nullptr));
        progressBar = nullptr;
        return import;
    }

  private:
    std::int32_t RunSection(ProbedImport& import) {
        const std::int32_t parsed = ParseBVH(nullptr);
        if (parsed < 0) return parsed;
        const std::int32_t fixed = FixRotationsOrder();
        if (fixed < 0) return fixed;
        RecordError(Zelk::CString());
        // The builder moves nodes, so they are written down before.
        WalkFile asParsed = Parsed();
        const Zelk::CStatus status = CreateZelkEntities(L"probe");
        if (!status.Succeeded()) return status.GetCode();
        import.sections.push_back(Section());
        import.sections.back().parsed = std::move(asParsed);
        return status.GetCode();
    }

    WalkFile Parsed() const {
        static constexpr const char* kTypes[] = {"",          "xposition", "yposition", "zposition",
                                                 "xrotation", "yrotation", "zrotation"};
        WalkFile file;
        std::unordered_map<const MOCAPMODEL*, int> places;
        for (const auto& node : models) {
            WalkJoint joint;
            joint.name = node->name.get();
            joint.parent = node->parent != nullptr ? places.at(node->parent) : -1;
            joint.isEndSite = node->isEndSite;
            joint.offset = {node->offset[0], node->offset[1], node->offset[2]};
            for (const auto& channel : node->channels)
                if (channel.type != kEmptySlot) joint.channels.emplace_back(kTypes[channel.type]);
            places[node.get()] = static_cast<int>(file.joints.size());
            file.joints.push_back(std::move(joint));
        }
        return file;
    }

    ProbedSection Section() {
        ProbedSection section;
        section.model = lastModel.GetRef().Object();
        for (const auto& node : models)
            section.joints.push_back(ObjectOf(*node));
        return section;
    }

    std::uint32_t ObjectOf(const MOCAPMODEL& node) {
        if (node.nullObject.IsValid()) return node.nullObject.GetRef().Object();
        if (node.bone.IsValid()) return node.bone.GetRef().Object();
        return node.parent == nullptr ? 0 : EffectorAt(node);
    }

    // A leaf without an object is where its chain ends.
    std::uint32_t EffectorAt(const MOCAPMODEL& leaf) {
        if (leaf.parent->bone.IsValid()) return leaf.parent->bone.GetEffector().GetRef().Object();
        const auto* above = CurrentScene().FindObject(leaf.parent->nullObject.GetRef().Object());
        if (above == nullptr) return 0;
        for (const auto* child = above->firstChild; child != nullptr; child = child->nextSibling)
            if (child->type == headless::ObjectType::ChainRoot &&
                child->chainData->bones.size() == 1 &&
                Reaches(*child->chainData->bones.front(), leaf))
                return child->chainData->effector->id;
        return 0;
    }

    // At rest nothing above a single-bone chain is turned, so the offset is the bone itself.
    static bool Reaches(const headless::Object& bone, const MOCAPMODEL& leaf) {
        const auto frame = headless::FromLocal(bone.local);
        double off = 0.0;
        for (int i = 0; i < 3; ++i)
            off += std::fabs(frame.axes[0][i] * bone.length - leaf.offset[i]);
        return off <= 1e-9 * (1.0 + bone.length);
    }
};

}  // namespace

ProbedImport ImportBvhText(const std::string& text, const ImportOptions& options) {
    const TempDir dir;
    const std::string path = dir.Write("probe.bvh", text);
    return ImportBvhFile(std::wstring(path.begin(), path.end()), options);
}

ProbedImport ImportBvhFile(const std::wstring& path, const ImportOptions& options) {
    headless::Session::Current().Reset();
    Importer importer;
    return importer.Run(path, options);
}

struct SectionMotion::Impl {
    static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

    headless::MotionEvaluator evaluator;
    std::vector<std::size_t> places;  // of each joint among the evaluator's objects
    std::vector<headless::Transform> globals;
    std::vector<headless::Transform> locals;
};

SectionMotion::SectionMotion(const ProbedSection& section) {
    const headless::Object& model = *CurrentScene().FindObject(section.model);
    const headless::ActionSource* motion = model.modelData->actions.back().get();
    impl_ = std::make_unique<Impl>(
        Impl{headless::MotionEvaluator(CurrentScene(), model, motion), {}, {}, {}});
    std::unordered_map<std::uint32_t, std::size_t> placeOf;
    const auto& objects = impl_->evaluator.Objects();
    for (std::size_t i = 0; i < objects.size(); ++i)
        placeOf[objects[i]->id] = i;
    for (const std::uint32_t joint : section.joints)
        impl_->places.push_back(joint == 0 ? Impl::kNowhere : placeOf.at(joint));
    impl_->globals.resize(objects.size());
    impl_->locals.resize(objects.size());
}

SectionMotion::~SectionMotion() = default;

SectionMotion::Pose SectionMotion::At(double frame) {
    // The cosine of the angle is 1e-5 where its sine is this close to 1.
    constexpr double kRightAngleSine = 1.0 - 0.5e-10;
    impl_->evaluator.Evaluate(frame, impl_->globals);
    impl_->evaluator.EvaluateLocal(frame, impl_->locals);
    Pose pose;
    for (const std::size_t place : impl_->places) {
        if (place == Impl::kNowhere) {
            pose.positions.push_back({});
            pose.nearRightAngle.push_back(false);
            continue;
        }
        const double* origin = impl_->globals[place].origin;
        pose.positions.push_back({origin[0], origin[1], origin[2]});
        pose.nearRightAngle.push_back(std::fabs(impl_->locals[place].axes[0][2]) > kRightAngleSine);
    }
    return pose;
}

}  // namespace support
