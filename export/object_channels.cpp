#include "export/object_channels.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>

namespace exporters {

ObjectChannels::ObjectChannels(const headless::Scene& scene, const headless::Object& model,
                               const ExportedMotion& motion, std::span<const double> frames)
    : scale_(motion.Scale()), joints_(motion.Joints().size()) {
    const std::vector<double>& keys = motion.Keys();
    const bool hasKeys = FindKeys(keys, frames);
    std::unordered_map<const headless::Object*, JointTracks*> tracksOf;
    for (std::size_t joint = 0; joint < joints_.size(); ++joint) {
        joints_[joint].isReadable = hasKeys && motion.IsItsObject(joint);
        const headless::Object* const object = motion.Joints()[joint].object;
        joints_[joint].object = object;
        std::copy(object->local.begin(), object->local.end(), joints_[joint].constants);
        tracksOf.emplace(object, &joints_[joint]);
    }
    if (!motion.Motion()) return;
    for (const headless::ActionItem& item : motion.Motion()->items) {
        const headless::Scene::Target target = scene.ResolveTarget(model, item);
        const auto found = tracksOf.find(target.object);
        const auto channel = static_cast<std::size_t>(target.channel);
        if (item.active && found != tracksOf.end() && channel < kChannels)
            AddItem(item, channel, keys, *found->second);
    }
}

// Most frames have the key that follows the key of the frame before.
bool ObjectChannels::FindKeys(const std::vector<double>& keys, std::span<const double> frames) {
    if (keys.empty()) return true;
    keyOf_.reserve(frames.size());
    for (const double frame : frames) {
        const std::size_t next = keyOf_.empty() ? 0 : keyOf_.back() + 1;
        if (next < keys.size() && keys[next] == frame) {
            keyOf_.push_back(next);
            continue;
        }
        const auto after = std::upper_bound(keys.begin(), keys.end(), frame);
        const bool isBetween = after != keys.begin() && after != keys.end();
        if (isBetween && *std::prev(after) != frame) return false;
        const std::size_t key = static_cast<std::size_t>(std::distance(keys.begin(), after)) -
                                (after == keys.begin() ? 0 : 1);
        areNeighbours_ &= keyOf_.empty() || key == next;
        keyOf_.push_back(key);
    }
    return true;
}

// Several items may have the same target. The last one counts, as in the evaluation of the scene.
void ObjectChannels::AddItem(const headless::ActionItem& item, std::size_t channel,
                             const std::vector<double>& keys, JointTracks& tracks) {
    tracks.constants[channel] = item.Value();
    tracks.values[channel] = nullptr;
    if (!item.IsCurve()) return;
    const headless::Keys& own = item.GetCurve().keys;
    const bool isKnown =
        own.times && (own.times.get() == knownTimes_ ||
                      std::equal(own.times->begin(), own.times->end(), keys.begin(), keys.end()));
    if (isKnown) knownTimes_ = own.times.get();
    tracks.isReadable &= isKnown;
    if (isKnown) tracks.values[channel] = own.values.get();
}

void ObjectChannels::ReadFrom(std::size_t first, std::size_t joint, std::size_t channel,
                              std::span<double> values) const {
    const JointTracks& tracks = joints_[joint];
    const double factor = channel < 3 ? scale_ : 1.0;
    if (!tracks.values[channel]) {
        std::fill(values.begin(), values.end(), factor * tracks.constants[channel]);
        return;
    }
    const double* const keys = tracks.values[channel]->data();
    if (areNeighbours_) {
        const double* const key = keys + keyOf_[first];
        for (std::size_t index = 0; index < values.size(); ++index)
            values[index] = factor * key[index];
        return;
    }
    for (std::size_t index = 0; index < values.size(); ++index)
        values[index] = factor * keys[keyOf_[first + index]];
}

bool ObjectChannels::IsNeverTurned(const JointTracks& tracks) const {
    for (std::size_t channel = 3; channel < kChannels; ++channel)
        if (tracks.values[channel] || tracks.constants[channel] != 0.0) return false;
    return true;
}

void ObjectChannels::ReadPoses(std::size_t joint, std::size_t first, std::size_t count,
                               math::PoseLanes& pose) const {
    const auto read = [&](std::size_t channel, double* lanes) {
        ReadFrom(first, joint, channel, {lanes, count});
        std::fill(lanes + count, lanes + math::kPoseLanes, lanes[count - 1]);
    };
    for (std::size_t axis = 0; axis < 3; ++axis)
        read(axis, pose.position[axis]);
    if (IsNeverTurned(joints_[joint])) {
        for (std::size_t part = 0; part < 4; ++part)
            std::fill_n(pose.rotation[part], math::kPoseLanes, part == 3 ? 1.0 : 0.0);
        return;
    }
    math::AngleLanes angles;
    for (std::size_t axis = 0; axis < 3; ++axis)
        read(3 + axis, angles.angle[axis]);
    math::TurnByAngles(angles, pose);
}

bool ObjectChannels::Keeps(std::size_t joint, std::size_t firstChannel) const {
    const JointTracks& tracks = joints_[joint];
    for (std::size_t channel = firstChannel; channel < firstChannel + 3; ++channel)
        if (tracks.values[channel] || tracks.constants[channel] != tracks.object->local[channel])
            return false;
    return tracks.isReadable;
}

}  // namespace exporters
