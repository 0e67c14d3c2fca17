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

bool ObjectChannels::FindKeys(const std::vector<double>& keys, std::span<const double> frames) {
    if (keys.empty()) return true;
    for (const double frame : frames) {
        const auto after = std::upper_bound(keys.begin(), keys.end(), frame);
        const bool isBetween = after != keys.begin() && after != keys.end();
        if (isBetween && *std::prev(after) != frame) return false;
        keyOf_.push_back(static_cast<std::size_t>(std::distance(keys.begin(), after)) -
                         (after == keys.begin() ? 0 : 1));
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

void ObjectChannels::Read(std::size_t joint, std::size_t channel, std::span<double> values) const {
    const JointTracks& tracks = joints_[joint];
    const double factor = channel < 3 ? scale_ : 1.0;
    if (!tracks.values[channel]) {
        std::fill(values.begin(), values.end(), factor * tracks.constants[channel]);
        return;
    }
    const headless::NumberArray& keys = *tracks.values[channel];
    for (std::size_t index = 0; index < values.size(); ++index)
        values[index] = factor * keys[keyOf_[index]];
}

}  // namespace exporters
