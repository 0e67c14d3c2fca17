#include "export/gltf_tracks.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <mutex>
#include <unordered_set>
#include <utility>
#include <vector>

#include "export/block_parts.h"
#include "export/finite_check.h"
#include "export/lane_poses.h"
#include "export/pose_blocks.h"
#include "export/quaternion.h"
#include "export/quaternion_run.h"
#include "export/run_parts.h"
#include "export/single.h"
#include "headless/text.h"
#include "text/wide_text.h"

namespace exporters {
namespace {

using headless::Object;
using headless::Transform;
using math::kPoseLanes;
using math::PoseLanes;
using RotationValue = GltfTrack<4>::Value;
using TranslationValue = GltfTrack<3>::Value;

constexpr auto kLargestSingle = static_cast<double>(std::numeric_limits<float>::max());

std::vector<float> TimesOf(const Timeline& timeline) {
    std::vector<float> times(timeline.frames.size());
    for (std::size_t frame = 0; frame < times.size(); ++frame) {
        times[frame] = Single(timeline.Seconds(frame));
        // glTF requires each time to be larger than the time before it. If rounding made two times
        // equal, the second becomes the next larger float.
        if (frame > 0 && times[frame] <= times[frame - 1])
            times[frame] = std::nextafter(times[frame - 1], std::numeric_limits<float>::infinity());
    }
    return times;
}

// Returns the objects whose rotation an active curve of the motion drives.
std::unordered_set<const Object*> TurnedByCurves(const headless::Scene& scene, const Object& model,
                                                 const headless::ActionSource& motion) {
    std::unordered_set<const Object*> turned;
    for (const headless::ActionItem& item : motion.items) {
        if (!item.active || !item.IsCurve()) continue;
        const auto target = scene.ResolveTarget(model, item);
        if (target.object && target.channel >= headless::Channel::RotX &&
            target.channel <= headless::Channel::RotZ)
            turned.insert(target.object);
    }
    return turned;
}

// Throws ExportError if one of the numbers is not finite or too large for 32 bits.
void RequireSingles(const double (&lanes)[kPoseLanes]) {
    unsigned others = 0;
    for (const double number : lanes)
        others |= static_cast<unsigned>(!(std::abs(number) <= kLargestSingle));
    if (others == 0) return;
    for (const double number : lanes)
        RequireSingle(number);
}

template <std::size_t kWidth>
using Block = std::array<std::array<float, kPoseLanes>, kWidth>;

template <std::size_t kWidth>
Block<kWidth> SinglesOf(const double (&lanes)[kWidth][kPoseLanes]) {
    Block<kWidth> block;
    for (std::size_t part = 0; part < kWidth; ++part) {
        RequireSingles(lanes[part]);
        for (std::size_t lane = 0; lane < kPoseLanes; ++lane)
            block[part][lane] = static_cast<float>(lanes[part][lane]);
    }
    return block;
}

template <std::size_t kWidth>
std::array<float, kWidth> ValueOf(const Block<kWidth>& block, std::size_t lane) {
    std::array<float, kWidth> value;
    for (std::size_t part = 0; part < kWidth; ++part)
        value[part] = block[part][lane];
    return value;
}

// The lanes that are not used repeat the last value, so all lanes can be compared.
template <std::size_t kWidth>
bool Differs(const Block<kWidth>& block, const std::array<float, kWidth>& rest) {
    unsigned others = 0;
    for (std::size_t part = 0; part < kWidth; ++part)
        for (const float number : block[part])
            others |= static_cast<unsigned>(number != rest[part]);
    return others != 0;
}

// Fills the tracks of a motion.
class TrackFiller {
  public:
    TrackFiller(const PoseBlocks& blocks, const GltfFrames& frames, std::size_t frameCount,
                GltfMotion& out)
        : blocks_(blocks), frames_(frames), out_(out) {
        const std::size_t joints = blocks.Joints().size();
        for (const auto& [first, end] : BlockParts(frameCount, joints)) {
            Part part{first, end, {}, {}, {}};
            for (std::size_t joint = 0; joint < joints; ++joint) {
                const RotationValue& rest = out.rotations[joint].Rest();
                part.runs.emplace_back(QuaternionRun::Value{rest[0], rest[1], rest[2], rest[3]});
            }
            // Until a value differs, no value of the part is stored.
            part.rotationsFrom.assign(joints, end);
            part.translationsFrom.assign(joints, end);
            parts_.push_back(std::move(part));
        }
    }

    void Fill(const Progress& progress) {
        // As the threads run at the same time, only one of them reports progress.
        RunParts(parts_.size(), [&](std::size_t part) {
            FillPart(parts_[part], part == 0 ? progress : Progress());
        });
        for (std::size_t joint = 0; joint < blocks_.Joints().size(); ++joint) {
            PutRest(joint, &Part::rotationsFrom, out_.rotations[joint]);
            PutRest(joint, &Part::translationsFrom, out_.translations[joint]);
            if (out_.rotations[joint].IsStored() && !blocks_.KeepsRotation(joint)) JoinParts(joint);
        }
    }

  private:
    // The frames that one thread computes. For each joint there is one element of each vector.
    struct Part {
        std::size_t first = 0;
        std::size_t end = 0;
        std::vector<QuaternionRun> runs;
        // The first frame whose value is stored. In the frames before it the value is that of the
        // node.
        std::vector<std::size_t> rotationsFrom;
        std::vector<std::size_t> translationsFrom;
    };

    void FillPart(Part& part, const Progress& progress) {
        PoseBlocks::Scratch scratch;
        for (std::size_t frame = part.first; frame < part.end; frame += kPoseLanes) {
            const std::size_t count = std::min(kPoseLanes, part.end - frame);
            for (std::size_t passed = 0; passed < count; ++passed)
                progress.Report(frame + passed - part.first, part.end - part.first);
            blocks_.Begin(frame, count, scratch);
            for (std::size_t joint = 0; joint < blocks_.Joints().size(); ++joint)
                FillJoint(joint, scratch, part);
        }
    }

    void FillJoint(std::size_t joint, const PoseBlocks::Scratch& scratch, Part& part) {
        const bool keepsRotation = blocks_.KeepsRotation(joint);
        const bool keepsPosition = blocks_.KeepsPosition(joint);
        if (keepsRotation && keepsPosition) return;
        PoseLanes pose;
        blocks_.Local(joint, scratch, pose);
        frames_.ApplyToLocals(joint, pose);
        if (!keepsRotation) {
            part.runs[joint].Continue(pose, scratch.count);
            // The lanes that are not used are to repeat the last value.
            for (auto& lanes : pose.rotation)
                std::fill(lanes + scratch.count, lanes + kPoseLanes, lanes[scratch.count - 1]);
            Put(SinglesOf(pose.rotation), scratch, part.rotationsFrom[joint],
                out_.rotations[joint]);
        }
        if (!keepsPosition)
            Put(SinglesOf(pose.position), scratch, part.translationsFrom[joint],
                out_.translations[joint]);
    }

    template <std::size_t kWidth>
    void Put(const Block<kWidth>& block, const PoseBlocks::Scratch& scratch, std::size_t& from,
             GltfTrack<kWidth>& track) {
        if (from > scratch.first) {
            if (!Differs(block, track.Rest())) return;
            from = scratch.first;
        }
        typename GltfTrack<kWidth>::Value* values = nullptr;
        {
            const std::lock_guard<std::mutex> lock(mutex_);
            values = track.Reserve() + scratch.first;
        }
        for (std::size_t lane = 0; lane < scratch.count; ++lane)
            values[lane] = ValueOf(block, lane);
    }

    // Completes a track that is stored.
    template <std::size_t kWidth>
    void PutRest(std::size_t joint, std::vector<std::size_t> Part::*from,
                 GltfTrack<kWidth>& track) const {
        if (!track.IsStored()) return;
        for (const Part& part : parts_)
            std::fill(track.Reserve() + part.first, track.Reserve() + (part.*from)[joint],
                      track.Rest());
    }

    // Makes the rotations of a joint continuous from part to part.
    void JoinParts(std::size_t joint) {
        std::vector<QuaternionRun> runs;
        for (const Part& part : parts_)
            runs.push_back(part.runs[joint]);
        const std::vector<std::size_t> negated = QuaternionRun::Join(runs);
        for (std::size_t part = 0; part < parts_.size(); ++part) {
            RotationValue* const values = out_.rotations[joint].Reserve() + parts_[part].first;
            for (std::size_t frame = 0; frame < negated[part]; ++frame)
                for (float& number : values[frame])
                    number = -number;
        }
    }

    const PoseBlocks& blocks_;
    const GltfFrames& frames_;
    GltfMotion& out_;
    std::vector<Part> parts_;
    std::mutex mutex_;  // for GltfTrack::Reserve
};

// The position and the rotation of a joint's node, rounded. They are computed like those of the
// frames, so that those of a joint that never moves are equal to them. `local` is in the base pose,
// `placed` is what GltfFrames makes of it and decides which of the two quaternions is returned.
std::pair<RotationValue, TranslationValue> RestOf(std::size_t joint, const Transform& local,
                                                  const Transform& placed,
                                                  const GltfFrames& gltfFrames) {
    PoseLanes pose;
    PutInAllLanes(local, pose);
    gltfFrames.ApplyToLocals(joint, pose);
    const Quaternion q = QuaternionOf(placed.axes);
    QuaternionRun({q.x, q.y, q.z, q.w}).Continue(pose, kPoseLanes);
    return {ValueOf(SinglesOf(pose.rotation), 0), ValueOf(SinglesOf(pose.position), 0)};
}

}  // namespace

GltfMotion BuildGltfMotion(const headless::Scene& scene, const Object& model,
                           const ExportedMotion& motion, const GltfFrames& gltfFrames,
                           const Progress& progress) {
    const headless::ActionSource& source = *motion.Motion();
    const Timeline& timeline = motion.Times();
    const std::size_t frames = timeline.frames.size();
    const std::size_t count = motion.Joints().size();
    GltfMotion out;
    out.name = text::EncodeUtf8(headless::View(source.name));
    out.firstFrame = timeline.frames.front();
    out.secondsPerFrame = timeline.secondsPerFrame;
    out.framesPerSecond = timeline.sampleRate.value_or(1.0 / timeline.secondsPerFrame);
    const double seconds = headless::SecondsPerFrame(source);
    if (seconds > 0.0 && IsFinite(1.0 / seconds)) out.sourceSecondsPerFrame = seconds;
    out.times = TimesOf(timeline);
    out.rotations.resize(count);
    out.translations.resize(count);

    std::vector<Transform> locals(count);
    motion.BaseLocals(locals);
    std::vector<Transform> placed = locals;
    gltfFrames.ApplyToLocals(placed);
    const auto turned = TurnedByCurves(scene, model, source);
    for (std::size_t joint = 0; joint < count; ++joint) {
        // glTF requires an animation to have at least one channel. The rotation of the first joint
        // is therefore always stored.
        const bool storesAll = joint == 0 || turned.contains(motion.Joints()[joint].object);
        const auto [rotation, translation] =
            RestOf(joint, locals[joint], placed[joint], gltfFrames);
        out.rotations[joint].Start(rotation, frames, storesAll);
        out.translations[joint].Start(translation, frames, false);
    }
    const PoseBlocks blocks(scene, model, motion, timeline.frames, false);
    TrackFiller(blocks, gltfFrames, frames, out).Fill(progress);
    return out;
}

}  // namespace exporters
