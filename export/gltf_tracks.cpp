#include "export/gltf_tracks.h"

#include <cmath>
#include <limits>
#include <unordered_set>

#include "export/finite_check.h"
#include "export/quaternion.h"
#include "export/single.h"
#include "headless/text.h"
#include "text/wide_text.h"

namespace exporters {
namespace {

using headless::Object;
using headless::Transform;
using RotationValue = GltfTrack<4>::Value;
using TranslationValue = GltfTrack<3>::Value;

TranslationValue TranslationOf(const Transform& local) {
    return {Single(local.origin[0]), Single(local.origin[1]), Single(local.origin[2])};
}

RotationValue RotationOf(const Transform& local, const RotationValue& before) {
    const Quaternion q = QuaternionNear(local.axes, {before[0], before[1], before[2], before[3]});
    return {static_cast<float>(q.x), static_cast<float>(q.y), static_cast<float>(q.z),
            static_cast<float>(q.w)};
}

constexpr RotationValue kNoRotation = {0.0F, 0.0F, 0.0F, 1.0F};

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
    gltfFrames.ApplyToLocals(locals);
    const auto turned = TurnedByCurves(scene, model, source);
    for (std::size_t joint = 0; joint < count; ++joint) {
        // glTF requires an animation to have at least one channel. The rotation of the first joint
        // is therefore always stored.
        const bool storesAll = joint == 0 || turned.contains(motion.Joints()[joint].object);
        out.rotations[joint].Start(RotationOf(locals[joint], kNoRotation), frames, storesAll);
        out.translations[joint].Start(TranslationOf(locals[joint]), frames, false);
    }
    ExportedMotion::Scratch scratch;
    for (std::size_t frame = 0; frame < frames; ++frame) {
        progress.Report(frame, frames);
        motion.Locals(timeline.frames[frame], locals, scratch);
        gltfFrames.ApplyToLocals(locals);
        for (std::size_t joint = 0; joint < count; ++joint) {
            auto& rotation = out.rotations[joint];
            rotation.Add(frame, RotationOf(locals[joint], rotation.Last()));
            out.translations[joint].Add(frame, TranslationOf(locals[joint]));
        }
    }
    return out;
}

}  // namespace exporters
