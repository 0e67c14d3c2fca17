#include "export/bvh.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "export/bvh_rows.h"
#include "export/exported_motion.h"
#include "export/finite_check.h"
#include "export/motion_facts.h"
#include "export/object_names.h"
#include "export/readable_name.h"
#include "headless/text.h"
#include "text/byte_sink.h"
#include "text/number_text.h"
#include "text/wide_text.h"

namespace exporters {
namespace {

using headless::Object;
using headless::Transform;

constexpr std::string_view kSixChannels =
    "CHANNELS 6 Xposition Yposition Zposition Zrotation Xrotation Yrotation\n";
constexpr std::string_view kThreeChannels = "CHANNELS 3 Zrotation Xrotation Yrotation\n";
// The most tabs before a line. Without this limit, the file of a long chain would be mostly white
// space.
constexpr std::size_t kMostTabs = 32;
// The frame time, in seconds, if only the base pose is written. The base pose has no rate, but the
// format requires a frame time.
constexpr double kPoseFrameTime = 1.0 / 30.0;
// Positions up to this fraction of the skeleton's size count as near 0.
constexpr double kNearZero = 2e-4;
// If joints may move, all frames are evaluated before the first row is written. That takes about
// this share of the time.
constexpr double kClassifyShare = 0.38;

// Returns the name as one word. White space and control characters of ASCII become "_", because a
// reader may end the word at them. An empty name becomes "_" too.
std::string Token(std::wstring_view name) {
    std::string token = text::EncodeUtf8(name);
    for (char& character : token) {
        const auto code = static_cast<unsigned char>(character);
        if (code <= ' ' || code == 0x7F) character = '_';
    }
    return token.empty() ? "_" : token;
}

bool SameOrigin(const Transform& a, const Transform& b) {
    return std::equal(a.origin, a.origin + 3, b.origin);
}

double DistanceFromParent(const Transform& local) {
    return std::hypot(local.origin[0], local.origin[1], local.origin[2]);
}

bool IsTurned(const Transform& transform) {
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            if (transform.axes[row][column] != (row == column ? 1.0 : 0.0)) return true;
    return false;
}

bool IsPositionChannel(headless::Channel channel) {
    return channel == headless::Channel::PosX || channel == headless::Channel::PosY ||
           channel == headless::Channel::PosZ || channel == headless::Channel::BoneLength;
}

struct SectionOptions {
    std::optional<int> digits;  // as Options::digits
    double poseFrameTime;       // the frame time in seconds of a section with only the base pose
};

// Writes one model as a section of the file.
class Section {
  public:
    Section(text::ByteSink& out, const headless::Scene& scene, const Object& model,
            const ExportedMotion& motion, const SectionOptions& options, Progress progress)
        : out_(out),
          scene_(scene),
          model_(model),
          motion_(motion),
          poseFrameTime_(options.poseFrameTime),
          progress_(std::move(progress)),
          locals_(motion.Joints().size()) {
        const auto& joints = motion_.Joints();
        const auto roots = std::count_if(joints.begin(), joints.end(), [](const Joint& joint) {
            return joint.parent == Joint::kNoParent;
        });
        addsRoot_ = roots != 1;
        turn_ = motion_.Turn().value_or(Transform());
        size_ = motion_.Size(motion_.Times());
        lengthDecimals_ = options.digits.value_or(text::DecimalsFor(size_));
        angleDecimals_ = options.digits.value_or(text::kAngleDecimals);
        isPrecise_ = angleDecimals_ > text::kAngleDecimals;
        ClassifyJoints();
    }

    void Write() {
        WriteHierarchy();
        WriteMotion();
    }

  private:
    using Kind = BvhKind;

    // Whether the motion can change the position of any joint except the root joint of the file. If
    // the result is false, ClassifyJoints need not evaluate every frame.
    bool MayMove() const {
        const headless::ActionSource* const motion = motion_.Motion();
        if (motion == nullptr) return false;
        return std::any_of(motion->items.begin(), motion->items.end(), [&](const auto& item) {
            const auto target = scene_.ResolveTarget(model_, item);
            if (!item.active || !target.object || !IsPositionChannel(target.channel)) return false;
            return addsRoot_ || target.object != motion_.Joints().front().object;
        });
    }

    void ClassifyJoints() {
        motion_.BaseLocals(locals_);
        base_ = locals_;
        kinds_.assign(locals_.size(), Kind::Rotating);
        if (MayMove()) {
            const std::vector<double>& frames = motion_.Times().frames;
            const Progress progress = progress_.Between(0.0, kClassifyShare);
            for (std::size_t frame = 0; frame < frames.size(); ++frame) {
                progress.Report(frame, frames.size());
                motion_.Locals(frames[frame], locals_, scratch_);
                for (std::size_t joint = 0; joint < locals_.size(); ++joint) {
                    if (SameOrigin(locals_[joint], base_[joint])) continue;
                    kinds_[joint] = Kind::Moving;
                    if (motion_.Joints()[joint].parent != Joint::kNoParent)
                        farthest_ = std::max(farthest_, DistanceFromParent(locals_[joint]));
                }
            }
        }
        ClassifyEndSites();
        if (!addsRoot_) kinds_[0] = Kind::Moving;
    }

    // If the positions of all joints that move are near 0, some readers take them for relative to
    // OFFSET. Without an OFFSET nobody can.
    bool LosesOffset(std::size_t joint) const {
        return kinds_[joint] == Kind::Moving && farthest_ <= kNearZero * size_;
    }

    void ClassifyEndSites() {
        std::vector<bool> isDriven(locals_.size(), false);
        if (const headless::ActionSource* const motion = motion_.Motion()) {
            motion_.Locals(motion_.Times().frames.front(), locals_, scratch_);
            MarkDriven(*motion, isDriven);
        }
        const auto& joints = motion_.Joints();
        for (std::size_t index = 0; index < joints.size(); ++index) {
            const Joint& joint = joints[index];
            if (!joint.isLeaf || joint.parent == Joint::kNoParent || isDriven[index] ||
                kinds_[index] == Kind::Moving || IsTurned(locals_[index]))
                continue;
            // An end site has no name in the file. It keeps its name only if that is the one that a
            // reader gives it.
            const std::wstring name = joints[joint.parent].name + std::wstring(kEndSuffix);
            if (joint.isEndSite && IsNumbered(joint.name, name)) kinds_[index] = Kind::EndSite;
        }
    }

    // Sets marks[i] if an active item of the motion drives the joint with the index i.
    void MarkDriven(const headless::ActionSource& motion, std::vector<bool>& marks) const {
        std::vector<std::uint32_t> ids;
        for (const headless::ActionItem& item : motion.items) {
            if (!item.active) continue;
            const Object* object = scene_.ResolveTarget(model_, item).object;
            if (object) ids.push_back(object->id);
        }
        std::sort(ids.begin(), ids.end());
        for (std::size_t index = 0; index < marks.size(); ++index)
            marks[index] =
                std::binary_search(ids.begin(), ids.end(), motion_.Joints()[index].object->id);
    }

    // The joints are already in the order in which the file lists them. `open` holds the indices of
    // the joints whose closing brace is not yet written. The innermost of these joints is the last.
    void WriteHierarchy() {
        out_.Write("HIERARCHY\n");
        if (addsRoot_)
            OpenJoint("ROOT " + Token(headless::View(model_.name)), Transform(), Kind::Moving);
        const auto& joints = motion_.Joints();
        std::vector<std::size_t> open;
        for (std::size_t index = 0; index < joints.size(); ++index) {
            const std::size_t parent = joints[index].parent;
            while (!open.empty() && open.back() != parent) {
                open.pop_back();
                CloseJoint();
            }
            open.push_back(index);
            if (kinds_[index] == Kind::EndSite) {
                OpenJoint("End Site", base_[index], Kind::EndSite);
                continue;
            }
            const bool isRoot = parent == Joint::kNoParent && !addsRoot_;
            OpenJoint((isRoot ? "ROOT " : "JOINT ") + Token(joints[index].name),
                      isRoot || LosesOffset(index) ? Transform() : base_[index], kinds_[index]);
        }
        while (depth_ > 0)
            CloseJoint();
    }

    void Indent() {
        static constexpr std::string_view kTabs =
            "\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t"
            "\t\t\t\t\t\t\t\t";
        static_assert(kTabs.size() == kMostTabs);
        out_.Write(kTabs.substr(0, std::min(depth_, kMostTabs)));
    }

    void OpenJoint(const std::string& head, const Transform& local, Kind kind) {
        Indent();
        out_.Write(head);
        out_.Write("\n");
        Indent();
        out_.Write("{\n");
        ++depth_;
        Indent();
        out_.Write("OFFSET");
        for (const double coordinate : local.origin) {
            char text[text::kLongestNumber + 1] = {' '};
            const char* end = text::WriteNumber(text + 1, CheckFinite(coordinate), lengthDecimals_);
            out_.Write({text, static_cast<std::size_t>(end - text)});
        }
        out_.Write("\n");
        if (kind == Kind::EndSite) return;
        Indent();
        out_.Write(kind == Kind::Moving ? kSixChannels : kThreeChannels);
    }

    void CloseJoint() {
        --depth_;
        Indent();
        out_.Write("}\n");
    }

    void WriteMotion() {
        const std::size_t frames = std::max<std::size_t>(motion_.Times().frames.size(), 1);
        const double seconds =
            motion_.Times().IsPose() ? poseFrameTime_ : 1.0 / FramesPerSecond(motion_.Times());
        out_.Write("MOTION\nFrames: " + std::to_string(frames) + "\nFrame Time: ");
        out_.Write(text::NumberText(CheckFinite(seconds)) + "\n");

        BvhRowLayout layout{kinds_, {}, {}, lengthDecimals_, angleDecimals_, isPrecise_};
        if (addsRoot_)
            layout.addedRoot = turn_;
        else
            layout.rootTurn = motion_.Turn();
        const Progress progress = progress_.Between(MayMove() ? kClassifyShare : 0.0, 1.0);
        BvhRows(scene_, model_, motion_, std::move(layout)).Write(out_, progress);
    }

    // Returns the number. Throws ExportError if it is not finite.
    double CheckFinite(double number) const {
        if (IsFinite(number)) return number;
        throw ExportError(ReadableName(model_.name) +
                          ": a position, angle or time is not a finite number");
    }

    text::ByteSink& out_;
    const headless::Scene& scene_;
    const Object& model_;
    const ExportedMotion& motion_;
    double poseFrameTime_;
    Progress progress_;
    ExportedMotion::Scratch scratch_;
    std::vector<Transform> locals_;
    std::vector<Transform> base_;
    std::vector<Kind> kinds_;
    // Whether a root joint is added to the file. The joints that have no parent joint in the scene
    // become its children.
    bool addsRoot_ = false;
    Transform turn_;         // the rotation that makes Y the up axis
    double size_ = 0.0;      // ExportedMotion::Size
    double farthest_ = 0.0;  // the greatest distance of a joint that moves from its parent
    int lengthDecimals_ = 0;
    int angleDecimals_ = 0;
    bool isPrecise_ = false;  // see BvhRowLayout
    std::size_t depth_ = 0;
};

}  // namespace

Notes WriteBvh(text::ByteSink& out, const headless::Scene& scene, const Options& options,
               const Progress& progress) {
    Notes notes;
    const std::vector<ExportedModel> models = ExportedModels(scene, options);
    std::vector<ExportedMotion> motions;
    motions.reserve(models.size());
    // A model without motion gets the frame time of the first one with motion, because some readers
    // take files whose sections have different frame times for broken.
    std::optional<double> frameTime;
    for (const ExportedModel& model : models) {
        motions.emplace_back(scene, model, MotionOf(*model.object), options, true, notes);
        if (!frameTime && !motions.back().Times().IsPose())
            frameTime = 1.0 / FramesPerSecond(motions.back().Times());
    }
    for (const ExportedModel& model : models)
        Section(out, scene, *model.object, motions[model.index],
                {options.digits, frameTime.value_or(kPoseFrameTime)},
                progress.Part(model.index, models.size()))
            .Write();
    return notes;
}

}  // namespace exporters
