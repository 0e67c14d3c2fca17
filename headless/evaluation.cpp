#include "headless/evaluation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <unordered_map>

#include "headless/chain_end.h"
#include "headless/driven.h"
#include "headless/key_axis.h"
#include "headless/key_times.h"
#include "headless/parts.h"
#include "headless/scene_records.h"

namespace headless {

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);
constexpr std::size_t kLength = static_cast<std::size_t>(Channel::BoneLength);

// The global transform that the object has in the scene. `object` may be null; the result is then
// the identity.
Transform GlobalOf(const Object* object) {
    Transform global;
    for (; object != nullptr; object = object->parent)
        global = global * FromLocal(object->local);
    return global;
}

// A curve that drives a channel.
struct Driver {
    std::size_t axis = 0;                 // index in Impl::axes
    const NumberArray* values = nullptr;  // null if no curve drives the channel
};

// What is needed to compute an object's transform at a frame. Objects are given by their indexes in
// Impl::objects.
struct Entry {
    std::size_t parent = 0;
    std::size_t endOfChain = kNone;  // for an effector, the index of EndOfChain(effector)
    // True for an effector whose parent is the root or a bone of its chain.
    bool isUnderOwnChain = false;
    // True for a bone whose parent is a bone; it begins at the parent's end.
    bool followsBone = false;
    std::size_t drivers = kNone;  // index in Impl::drivers; kNone if no curve drives the object
    std::array<double, 6> local{};
    double length = 0.0;
    Transform localTransform;  // `local` as a transform
};

// For each KeyAxis of a motion, the interval that contains the frame. Up to four intervals are
// stored without an allocation, which is enough for most motions.
class Intervals {
  public:
    explicit Intervals(std::size_t count) : many_(count > few_.size() ? count : 0) {}
    KeyAxis::Interval& operator[](std::size_t axis) {
        return many_.empty() ? few_[axis] : many_[axis];
    }
    const KeyAxis::Interval& operator[](std::size_t axis) const {
        return many_.empty() ? few_[axis] : many_[axis];
    }

  private:
    std::array<KeyAxis::Interval, 4> few_;
    std::vector<KeyAxis::Interval> many_;
};

}  // namespace

struct HEADLESS_HIDDEN MotionEvaluator::Impl {
    using Drivers = std::array<Driver, kChannelCount>;

    std::vector<const Object*> objects;
    std::vector<std::size_t> parents;
    std::vector<Entry> entries;
    std::vector<Drivers> drivers;
    std::vector<KeyAxis> axes;
    Transform parentGlobal;  // the global transform of the model's parent
    // The index of each object in `objects`; kNone while the object is not listed there yet.
    std::unordered_map<const Object*, std::size_t> indexes;
    std::unordered_map<const NumberArray*, std::size_t> axisOfTimes;  // index in `axes`

    void PutInOrder(const Object& model);
    void BuildEntries();
    void Resolve(const Scene& scene, const Object& model, const ActionSource& motion);
    void Attach(std::size_t index, std::size_t channel, const ActionItem& item);
    std::size_t AxisOf(const NumberArray& times);

    Intervals IntervalsAt(double frame) const;
    double Value(const Entry& entry, std::size_t channel, double undriven,
                 const Intervals& at) const;
    double LengthAt(const Entry& entry, const Intervals& at) const;
    Transform LocalAt(const Entry& entry, const Intervals& at) const;
    Transform EndAt(std::size_t index, const Intervals& at) const;
    void Globals(const Intervals& at, std::span<Transform> globals) const;
};

// Fills `objects`. A parent comes before its children. An effector comes after the end of its
// chain, even if the effector has been moved out of the chain.
void MotionEvaluator::Impl::PutInOrder(const Object& model) {
    std::vector<const Object*> all{&model};
    for (std::size_t index = 0; index < all.size(); ++index) {
        indexes.emplace(all[index], kNone);
        for (const Object* child = all[index]->firstChild; child; child = child->nextSibling)
            all.push_back(child);
    }
    const auto isStillToCome = [this](const Object* object) {
        const auto found = indexes.find(object);
        return found != indexes.end() && found->second == kNone;
    };
    std::unordered_map<const Object*, const Object*> waitingFor;  // chain end -> effector
    std::vector<const Object*> next{&model};
    while (!next.empty()) {
        const Object* const object = next.back();
        next.pop_back();
        const Object* const end = EndOfChain(*object);
        if (end != nullptr && isStillToCome(end)) {
            waitingFor.emplace(end, object);
            continue;
        }
        indexes[object] = objects.size();
        objects.push_back(object);
        for (const Object* child = object->lastChild; child; child = child->previousSibling)
            next.push_back(child);
        const auto waiting = waitingFor.find(object);
        if (waiting != waitingFor.end()) next.push_back(waiting->second);
    }
}

void MotionEvaluator::Impl::BuildEntries() {
    entries.resize(objects.size());
    parents.resize(objects.size());
    for (std::size_t index = 0; index < objects.size(); ++index) {
        const Object& object = *objects[index];
        Entry& entry = entries[index];
        entry.local = object.local;
        entry.length = object.length;
        entry.parent = index == 0 ? 0 : indexes.at(object.parent);
        parents[index] = entry.parent;
        entry.followsBone = index != 0 && object.type == ObjectType::ChainBone &&
                            object.parent->type == ObjectType::ChainBone;
        // A chain that is not under the model does not move, so its effector keeps its local
        // transform.
        const auto end = indexes.find(EndOfChain(object));
        if (end == indexes.end()) continue;
        entry.endOfChain = end->second;
        entry.isUnderOwnChain =
            object.parent == object.chainRoot || (object.parent->type == ObjectType::ChainBone &&
                                                  object.parent->chainRoot == object.chainRoot);
    }
}

std::size_t MotionEvaluator::Impl::AxisOf(const NumberArray& times) {
    const auto [found, isNew] = axisOfTimes.try_emplace(&times, axes.size());
    if (isNew) axes.emplace_back(times);
    return found->second;
}

void MotionEvaluator::Impl::Attach(std::size_t index, std::size_t channel, const ActionItem& item) {
    Entry& entry = entries[index];
    Driver driver;
    if (item.IsCurve()) {
        const Keys& keys = item.GetCurve().keys;
        if (keys.Count() == 0) return;
        driver.axis = AxisOf(*keys.times);
        driver.values = keys.values.get();
        if (axes[driver.axis].IsEmpty()) return;
    } else if (channel == kLength) {
        entry.length = item.Value();
    } else {
        entry.local[channel] = item.Value();
    }
    if (entry.drivers == kNone) {
        if (driver.values == nullptr) return;
        entry.drivers = drivers.size();
        drivers.emplace_back();
    }
    drivers[entry.drivers][channel] = driver;
}

void MotionEvaluator::Impl::Resolve(const Scene& scene, const Object& model,
                                    const ActionSource& motion) {
    for (const ActionItem& item : motion.items) {
        if (!item.active) continue;
        const Scene::Target target = scene.ResolveTarget(model, item);
        if (target.object == nullptr) continue;
        const auto found = indexes.find(DrivenBy(*target.object, target.channel));
        if (found != indexes.end())
            Attach(found->second, static_cast<std::size_t>(target.channel), item);
    }
}

Intervals MotionEvaluator::Impl::IntervalsAt(double frame) const {
    Intervals at(axes.size());
    for (std::size_t axis = 0; axis < axes.size(); ++axis)
        if (!axes[axis].IsEmpty()) at[axis] = axes[axis].At(frame);
    return at;
}

double MotionEvaluator::Impl::Value(const Entry& entry, std::size_t channel, double undriven,
                                    const Intervals& at) const {
    if (entry.drivers == kNone) return undriven;
    const Driver& driver = drivers[entry.drivers][channel];
    return driver.values == nullptr ? undriven : ValueAt(*driver.values, at[driver.axis]);
}

double MotionEvaluator::Impl::LengthAt(const Entry& entry, const Intervals& at) const {
    return Value(entry, kLength, entry.length, at);
}

Transform MotionEvaluator::Impl::LocalAt(const Entry& entry, const Intervals& at) const {
    Transform seen = entry.localTransform;
    if (entry.drivers != kNone) {
        std::array<double, 6> local;
        for (std::size_t channel = 0; channel < local.size(); ++channel)
            local[channel] = Value(entry, channel, entry.local[channel], at);
        seen = FromLocal(local);
    }
    if (entry.followsBone) seen.origin[0] = LengthAt(entries[entry.parent], at);
    return seen;
}

// The transform of an effector relative to the end of its chain.
Transform MotionEvaluator::Impl::EndAt(std::size_t index, const Intervals& at) const {
    const std::size_t end = entries[index].endOfChain;
    const bool isBone = objects[end]->type == ObjectType::ChainBone;
    return EffectorSeenFromEnd(*objects[index], isBone ? LengthAt(entries[end], at) : 0.0);
}

void MotionEvaluator::Impl::Globals(const Intervals& at, std::span<Transform> globals) const {
    for (std::size_t index = 0; index < entries.size(); ++index) {
        const Entry& entry = entries[index];
        if (entry.endOfChain != kNone)
            globals[index] = EndAt(index, at) * globals[entry.endOfChain];
        else
            globals[index] =
                LocalAt(entry, at) * (index == 0 ? parentGlobal : globals[entry.parent]);
    }
}

MotionEvaluator::MotionEvaluator(const Scene& scene, const Object& model,
                                 const ActionSource* motion)
    : impl_(std::make_unique<Impl>()) {
    impl_->PutInOrder(model);
    impl_->BuildEntries();
    impl_->parentGlobal = GlobalOf(model.parent);
    if (motion != nullptr) impl_->Resolve(scene, model, *motion);
    for (Entry& entry : impl_->entries)
        entry.localTransform = FromLocal(entry.local);
}

MotionEvaluator::~MotionEvaluator() = default;

MotionEvaluator::MotionEvaluator(MotionEvaluator&&) noexcept = default;

const std::vector<const Object*>& MotionEvaluator::Objects() const {
    return impl_->objects;
}

const std::vector<std::size_t>& MotionEvaluator::Parents() const {
    return impl_->parents;
}

void MotionEvaluator::Evaluate(double frame, std::span<Transform> globals) const {
    impl_->Globals(impl_->IntervalsAt(frame), globals);
}

void MotionEvaluator::EvaluateLocal(double frame, std::span<Transform> locals) const {
    const Intervals at = impl_->IntervalsAt(frame);
    const std::vector<Entry>& entries = impl_->entries;
    std::vector<Transform> globals;
    for (std::size_t index = 0; index < entries.size(); ++index) {
        const Entry& entry = entries[index];
        if (entry.endOfChain == kNone) {
            locals[index] = impl_->LocalAt(entry, at);
            continue;
        }
        if (entry.isUnderOwnChain) {
            // The transforms of the bones have been computed, because bones come before their
            // effector.
            locals[index] = impl_->EndAt(index, at);
            for (std::size_t bone = entry.endOfChain; bone != entry.parent;
                 bone = entries[bone].parent)
                locals[index] = locals[index] * locals[bone];
            continue;
        }
        if (globals.empty()) {
            globals.resize(entries.size());
            impl_->Globals(at, globals);
        }
        // The first object is the model, which is not an effector. So this effector has a parent in
        // `globals`.
        locals[index] = globals[index] * Inverse(globals[entry.parent]);
    }
}

double SecondsPerFrame(const ActionSource& motion) {
    double last = -std::numeric_limits<double>::infinity();
    WalkKeyTimes(motion, [&](const NumberArray& times) {
        // With the arguments in this order, std::max returns `last` if `time` is NaN.
        for (const double time : times)
            last = std::max(last, time);
    });
    const double seconds = motion.animEnd / last;
    return last != 0.0 && std::isfinite(last) && std::isfinite(seconds) ? seconds : 0.0;
}

}  // namespace headless
