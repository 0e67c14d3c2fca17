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
#include "tests/support/parsed_bvh.h"

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

// The joints as the parser left them.
WalkFile JointsOf(const MocapSkeleton& skeleton) {
    static constexpr const char* kTypes[] = {"",          "xposition", "yposition", "zposition",
                                             "xrotation", "yrotation", "zrotation"};
    WalkFile file;
    std::unordered_map<const MOCAPMODEL*, int> indices;
    for (const auto& node : skeleton.models) {
        WalkJoint joint;
        joint.name = node->name.get();
        joint.parent = node->parent != nullptr ? indices.at(node->parent) : -1;
        joint.isEndSite = node->isEndSite;
        joint.offset = {node->offset[0], node->offset[1], node->offset[2]};
        for (const auto& channel : node->channels)
            if (channel.type != kEmptySlot) joint.channels.emplace_back(kTypes[channel.type]);
        indices[node.get()] = static_cast<int>(file.joints.size());
        file.joints.push_back(std::move(joint));
    }
    return file;
}

// At rest nothing above a chain of one bone is rotated, so the bone has the direction and the
// length of the leaf's offset.
bool Reaches(const headless::Object& bone, const MOCAPMODEL& leaf) {
    const auto frame = headless::FromLocal(bone.local);
    double difference = 0.0;
    for (int i = 0; i < 3; ++i)
        difference += std::fabs(frame.axes[0][i] * bone.length - leaf.offset[i]);
    return difference <= 1e-9 * (1.0 + bone.length);
}

// Returns the effector of the chain that ends at a leaf without an object, or 0.
std::uint32_t EffectorAt(const MOCAPMODEL& leaf) {
    if (leaf.parent->bone.IsValid()) return leaf.parent->bone.GetEffector().GetRef().Object();
    const auto* parent = CurrentScene().FindObject(leaf.parent->nullObject.GetRef().Object());
    if (parent == nullptr) return 0;
    for (const auto* child = parent->firstChild; child != nullptr; child = child->nextSibling)
        if (child->type == headless::ObjectType::ChainRoot && child->chainData->bones.size() == 1 &&
            Reaches(*child->chainData->bones.front(), leaf))
            return child->chainData->effector->id;
    return 0;
}

std::uint32_t ObjectOf(const MOCAPMODEL& node) {
    if (node.nullObject.IsValid()) return node.nullObject.GetRef().Object();
    if (node.bone.IsValid()) return node.bone.GetRef().Object();
    return node.parent == nullptr ? 0 : EffectorAt(node);
}

ProbedImport Import(ParsedBvh& file, const ImportOptions& options) {
    headless::Session::Current().Reset();
    ProbedImport import;
    while (import.status == 0 && file.file.PeekNextString() != nullptr) {
        import.status = file.ParseSection();
        if (import.status < 0) {
            import.error = file.Message();
            break;
        }
        ProbedSection section;
        section.parsed = JointsOf(file.skeleton);
        CBiovisionImport importer;
        importer.SetOptions(options.nulls, options.chainFromParent, options.effectorToLastBone,
                            true);
        import.status =
            importer.ImportParsed(std::move(file.skeleton), file.parser.FrameTime(), L"probe")
                .GetCode();
        import.error = Narrow(importer.GetLastError(nullptr, nullptr));
        if (import.status != 0) break;
        section.model = importer.GetLastModel().GetRef().Object();
        for (const auto& node : importer.GetSkeleton().models)
            section.joints.push_back(ObjectOf(*node));
        import.sections.push_back(std::move(section));
    }
    return import;
}

}  // namespace

ProbedImport ImportBvhText(const std::string& text, const ImportOptions& options) {
    ParsedBvh file;
    if (!file.Open(text)) throw std::runtime_error("the text is empty or too long");
    return Import(file, options);
}

ProbedImport ImportBvhFile(const std::wstring& path, const ImportOptions& options) {
    ParsedBvh file;
    if (!file.file.ReadFile(path.c_str()))
        throw std::runtime_error("cannot read " + Narrow(path.c_str()));
    file.allowances.Reset(file.file.GetSize());
    return Import(file, options);
}

struct SectionMotion::Impl {
    static constexpr std::size_t kNoObject = static_cast<std::size_t>(-1);

    headless::MotionEvaluator evaluator;
    std::vector<std::size_t> indices;  // of the joints' objects among those of the evaluator
    std::vector<headless::Transform> globals;
    std::vector<headless::Transform> locals;
};

SectionMotion::SectionMotion(const ProbedSection& section) {
    const headless::Object& model = *CurrentScene().FindObject(section.model);
    const headless::ActionSource* motion = model.modelData->actions.back().get();
    impl_ = std::make_unique<Impl>(
        Impl{headless::MotionEvaluator(CurrentScene(), model, motion), {}, {}, {}});
    std::unordered_map<std::uint32_t, std::size_t> indexOf;
    const auto& objects = impl_->evaluator.Objects();
    for (std::size_t i = 0; i < objects.size(); ++i)
        indexOf[objects[i]->id] = i;
    for (const std::uint32_t joint : section.joints)
        impl_->indices.push_back(joint == 0 ? Impl::kNoObject : indexOf.at(joint));
    impl_->globals.resize(objects.size());
    impl_->locals.resize(objects.size());
}

SectionMotion::~SectionMotion() = default;

SectionMotion::Pose SectionMotion::At(double frame) {
    // If the sine of the angle is this close to 1, the cosine is below 1e-5.
    constexpr double kRightAngleSine = 1.0 - 0.5e-10;
    impl_->evaluator.Evaluate(frame, impl_->globals);
    impl_->evaluator.EvaluateLocal(frame, impl_->locals);
    Pose pose;
    for (const std::size_t index : impl_->indices) {
        if (index == Impl::kNoObject) {
            pose.positions.push_back({});
            pose.nearRightAngle.push_back(false);
            continue;
        }
        const double* origin = impl_->globals[index].origin;
        pose.positions.push_back({origin[0], origin[1], origin[2]});
        pose.nearRightAngle.push_back(std::fabs(impl_->locals[index].axes[0][2]) > kRightAngleSine);
    }
    return pose;
}

}  // namespace support
