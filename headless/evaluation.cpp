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

constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);
constexpr std::size_t kLength = static_cast<std::size_t>(Channel::BoneLength);

Transform StandingGlobal(const Object* object) {
    Transform global;
    for (; object != nullptr; object = object->parent)
        global = global * FromLocal(object->local);
    return global;
}

// A curve that drives a channel.
struct Driver {
    std::size_t axis = 0;
    const std::vector<double>* values = nullptr;  // null: nothing drives it
};

// What a frame needs to know of one object. Places are those in `objects`.
struct Part {
    std::size_t parent = 0;
    std::size_t endOfChain = kNowhere;  // of an effector
    bool hangsInChain = false;          // an effector below its chain's root or one of its bones
    bool followsBone = false;           // a bone that stands at the end of the bone above it
    std::size_t drivers = kNowhere;     // in Impl::drivers; most objects have none
    std::array<double, 6> local{};
    double length = 0.0;
    Transform standing;  // `local` as a transform
};

// Where a frame lies on each axis. Most motions have one axis, and a frame of those needs no
// memory.
class Places {
  public:
    explicit Places(std::size_t count) : many_(count > few_.size() ? count : 0) {}
    KeyAxis::Place& operator[](std::size_t axis) {
        return many_.empty() ? few_[axis] : many_[axis];
    }
    const KeyAxis::Place& operator[](std::size_t axis) const {
        return many_.empty() ? few_[axis] : many_[axis];
    }

  private:
    std::array<KeyAxis::Place, 4> few_;
    std::vector<KeyAxis::Place> many_;
};

}  // namespace

struct HEADLESS_HIDDEN MotionEvaluator::Impl {
    using Drivers = std::array<Driver, kChannelCount>;

    std::vector<const Object*> objects;
    std::vector<std::size_t> parents;
    std::vector<Part> parts;
    std::vector<Drivers> drivers;
    std::vector<KeyAxis> axes;
    Transform aroundModel;
    std::unordered_map<const Object*, std::size_t> places;
    std::unordered_map<const std::vector<double>*, std::size_t> axisOfTimes;

    void PutInOrder(const Object& model);
    void MakeParts();
    void Resolve(const Scene& scene, const Object& model, const ActionSource& motion);
    void Attach(std::size_t place, std::size_t channel, const ActionItem& item);
    std::size_t AxisOf(const std::vector<double>& times);

    Places PlacesAt(double frame) const;
    double Value(const Part& part, std::size_t channel, double standing, const Places& at) const;
    double LengthAt(const Part& part, const Places& at) const;
    Transform LocalAt(const Part& part, const Places& at) const;
    Transform EndAt(std::size_t place, const Places& at) const;
    void Globals(const Places& at, std::span<Transform> globals) const;
};

// Parents before children, and an effector after the end of its chain, wherever either of them
// hangs.
void MotionEvaluator::Impl::PutInOrder(const Object& model) {
    std::vector<const Object*> all{&model};
    for (std::size_t index = 0; index < all.size(); ++index) {
        places.emplace(all[index], kNowhere);
        for (const Object* child = all[index]->firstChild; child; child = child->nextSibling)
            all.push_back(child);
    }
    const auto isWaitedFor = [this](const Object* object) {
        const auto found = places.find(object);
        return found != places.end() && found->second == kNowhere;
    };
    std::unordered_map<const Object*, const Object*> waitingFor;  // chain end -> effector
    std::vector<const Object*> next{&model};
    while (!next.empty()) {
        const Object* const object = next.back();
        next.pop_back();
        const Object* const end = EndOfChain(*object);
        if (end != nullptr && isWaitedFor(end)) {
            waitingFor.emplace(end, object);
            continue;
        }
        places[object] = objects.size();
        objects.push_back(object);
        for (const Object* child = object->lastChild; child; child = child->previousSibling)
            next.push_back(child);
        const auto waiting = waitingFor.find(object);
        if (waiting != waitingFor.end()) next.push_back(waiting->second);
    }
}

void MotionEvaluator::Impl::MakeParts() {
    parts.resize(objects.size());
    parents.resize(objects.size());
    for (std::size_t place = 0; place < objects.size(); ++place) {
        const Object& object = *objects[place];
        Part& part = parts[place];
        part.local = object.local;
        part.length = object.length;
        part.parent = place == 0 ? 0 : places.at(object.parent);
        parents[place] = part.parent;
        part.followsBone = place != 0 && object.type == ObjectType::ChainBone &&
                           object.parent->type == ObjectType::ChainBone;
        // A chain that is not below the model stands still, and its effector with it.
        const auto end = places.find(EndOfChain(object));
        if (end == places.end()) continue;
        part.endOfChain = end->second;
        part.hangsInChain =
            object.parent == object.chainRoot || (object.parent->type == ObjectType::ChainBone &&
                                                  object.parent->chainRoot == object.chainRoot);
    }
}

std::size_t MotionEvaluator::Impl::AxisOf(const std::vector<double>& times) {
    const auto [found, isNew] = axisOfTimes.try_emplace(&times, axes.size());
    if (isNew) axes.emplace_back(times);
    return found->second;
}

void MotionEvaluator::Impl::Attach(std::size_t place, std::size_t channel, const ActionItem& item) {
    Part& part = parts[place];
    Driver driver;
    if (item.IsCurve()) {
        const Keys& keys = item.GetCurve().keys;
        if (keys.Count() == 0) return;
        driver.axis = AxisOf(*keys.times);
        driver.values = keys.values.get();
        if (axes[driver.axis].IsEmpty()) return;
    } else if (channel == kLength) {
        part.length = item.Value();
    } else {
        part.local[channel] = item.Value();
    }
    if (part.drivers == kNowhere) {
        if (driver.values == nullptr) return;
        part.drivers = drivers.size();
        drivers.emplace_back();
    }
    drivers[part.drivers][channel] = driver;
}

void MotionEvaluator::Impl::Resolve(const Scene& scene, const Object& model,
                                    const ActionSource& motion) {
    for (const ActionItem& item : motion.items) {
        if (!item.active) continue;
        const Scene::Target target = scene.ResolveTarget(model, item);
        if (target.object == nullptr) continue;
        const auto place = places.find(DrivenBy(*target.object, target.channel));
        if (place != places.end())
            Attach(place->second, static_cast<std::size_t>(target.channel), item);
    }
}

Places MotionEvaluator::Impl::PlacesAt(double frame) const {
    Places at(axes.size());
    for (std::size_t axis = 0; axis < axes.size(); ++axis)
        if (!axes[axis].IsEmpty()) at[axis] = axes[axis].At(frame);
    return at;
}

double MotionEvaluator::Impl::Value(const Part& part, std::size_t channel, double standing,
                                    const Places& at) const {
    if (part.drivers == kNowhere) return standing;
    const Driver& driver = drivers[part.drivers][channel];
    return driver.values == nullptr ? standing : ValueAt(*driver.values, at[driver.axis]);
}

double MotionEvaluator::Impl::LengthAt(const Part& part, const Places& at) const {
    return Value(part, kLength, part.length, at);
}

Transform MotionEvaluator::Impl::LocalAt(const Part& part, const Places& at) const {
    Transform seen = part.standing;
    if (part.drivers != kNowhere) {
        std::array<double, 6> local;
        for (std::size_t channel = 0; channel < local.size(); ++channel)
            local[channel] = Value(part, channel, part.local[channel], at);
        seen = FromLocal(local);
    }
    if (part.followsBone) seen.origin[0] = LengthAt(parts[part.parent], at);
    return seen;
}

// An effector, seen from the end of its chain.
Transform MotionEvaluator::Impl::EndAt(std::size_t place, const Places& at) const {
    const std::size_t end = parts[place].endOfChain;
    const bool isBone = objects[end]->type == ObjectType::ChainBone;
    return EffectorSeenFromEnd(*objects[place], isBone ? LengthAt(parts[end], at) : 0.0);
}

void MotionEvaluator::Impl::Globals(const Places& at, std::span<Transform> globals) const {
    for (std::size_t place = 0; place < parts.size(); ++place) {
        const Part& part = parts[place];
        if (part.endOfChain != kNowhere)
            globals[place] = EndAt(place, at) * globals[part.endOfChain];
        else
            globals[place] = LocalAt(part, at) * (place == 0 ? aroundModel : globals[part.parent]);
    }
}

MotionEvaluator::MotionEvaluator(const Scene& scene, const Object& model,
                                 const ActionSource* motion)
    : impl_(std::make_unique<Impl>()) {
    impl_->PutInOrder(model);
    impl_->MakeParts();
    impl_->aroundModel = StandingGlobal(model.parent);
    if (motion != nullptr) impl_->Resolve(scene, model, *motion);
    for (Part& part : impl_->parts)
        part.standing = FromLocal(part.local);
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
    impl_->Globals(impl_->PlacesAt(frame), globals);
}

void MotionEvaluator::EvaluateLocal(double frame, std::span<Transform> locals) const {
    const Places at = impl_->PlacesAt(frame);
    const std::vector<Part>& parts = impl_->parts;
    std::vector<Transform> globals;
    for (std::size_t place = 0; place < parts.size(); ++place) {
        const Part& part = parts[place];
        if (part.endOfChain == kNowhere) {
            locals[place] = impl_->LocalAt(part, at);
            continue;
        }
        if (part.hangsInChain) {
            // Along the bones, which all stand before their effector here.
            locals[place] = impl_->EndAt(place, at);
            for (std::size_t bone = part.endOfChain; bone != part.parent; bone = parts[bone].parent)
                locals[place] = locals[place] * locals[bone];
            continue;
        }
        if (globals.empty()) {
            globals.resize(parts.size());
            impl_->Globals(at, globals);
        }
        // A model is never an effector, so an effector here has a parent.
        locals[place] = globals[place] * Inverse(globals[part.parent]);
    }
}

double SecondsPerFrame(const ActionSource& motion) {
    double last = -std::numeric_limits<double>::infinity();
    WalkKeyTimes(motion, [&](const std::vector<double>& times) {
        // In this order: a comparison with NaN is false, so `last` stays.
        for (const double time : times)
            last = std::max(last, time);
    });
    const double seconds = motion.animEnd / last;
    return last != 0.0 && std::isfinite(last) && std::isfinite(seconds) ? seconds : 0.0;
}

}  // namespace headless
