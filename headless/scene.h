// The scene of the embedded host: every object, action, group and clip, in memory, as plain
// records. The plug-in reaches it through host/ alone; applications and tests read it here. What is
// const here has no hidden state: while nobody changes a scene, any number of threads may read it.
// Positions and lengths are in scene units, rotations in degrees, key times in frames, AnimEnd in
// seconds.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "headless/name_table.h"
#include "host/export.h"
#include "host/ref.h"
#include "host/string.h"

namespace headless {

enum class ObjectType : std::uint8_t { Model, Null, ChainRoot, ChainBone, ChainEffector };

// The parameters of an object, in the order of the `local` array; `BoneLength` is Object::length.
enum class Channel : std::uint8_t { PosX, PosY, PosZ, RotX, RotY, RotZ, BoneLength };

struct Object;

// Keys of a curve. Times and values are of one length and immutable once set, so that a curve and
// the items made of it share them; a curve whose times equal those set just before shares these.
struct Keys {
    std::shared_ptr<const std::vector<double>> times;
    std::shared_ptr<const std::vector<double>> values;
    std::size_t Count() const { return times ? times->size() : 0; }
};

struct Curve {
    std::int32_t interpolation = 0;  // 1 is linear
    Keys keys;
};

// One entry of an action source: a static value or a curve for a target, whose name is relative to
// the model ("LeftArm.kine.local.rotx"). A large skeleton has millions of them, so one is small:
// the object's name is the object's own text, shared, and the rest of the target is a number.
struct ZELK_API ActionItem {
    Zelk::CString object;            // empty: the model's own channel
    std::optional<Channel> channel;  // none: `object` is the target as it was given, whole
    bool active = true;

    explicit ActionItem(double value) : value_(value) {}
    explicit ActionItem(std::unique_ptr<const Curve> curve)
        : isCurve_(true), curve_(curve.release()) {}
    ActionItem(ActionItem&& other) noexcept;
    ActionItem& operator=(ActionItem&&) = delete;
    ~ActionItem() {
        if (isCurve_) delete curve_;
    }

    bool IsCurve() const { return isCurve_; }
    // Of a static item; 0 of a curve item.
    double Value() const { return isCurve_ ? 0.0 : value_; }
    // Of a curve item.
    const Curve& GetCurve() const { return *curve_; }
    // The name as it was given.
    Zelk::CString Target() const;

  private:
    bool isCurve_ = false;
    union {
        double value_;
        const Curve* curve_;
    };
};

struct ActionSource {
    std::uint32_t id = 0;
    Zelk::CString name;
    double animEnd = 0.0;
    std::deque<ActionItem> items;  // in the order they were added
    Object* owner = nullptr;       // the model, or the scene root
};

struct Group {
    std::uint32_t id = 0;
    Zelk::CString name;
    std::vector<std::uint32_t> members;  // object ids
    Object* owner = nullptr;             // the model, or the scene root
};

// The motion of an action in the model's mixer. `source` is the action's id.
struct Clip {
    Zelk::CString name;
    std::uint32_t source = 0;
};

struct Property {
    std::uint32_t id = 0;
    Zelk::CString name;
    struct CurveParameter {
        Zelk::CString name;
        Curve curve;
    };
    std::vector<CurveParameter> curves;
    Object* owner = nullptr;
};

// What only a model has.
struct ModelData {
    NameTable objectNames;  // the model's own name included
    NameTable actionNames;
    NameTable groupNames;
    NameTable clipNames;
    std::vector<std::unique_ptr<ActionSource>> actions;
    std::vector<std::unique_ptr<Group>> groups;
    std::vector<Clip> clips;
    // The action whose curves "ApplyAction" attached last. They do not change the objects' states:
    // this host does not play, MotionEvaluator tells where a frame puts everything.
    const ActionSource* attached = nullptr;
};

// What only a chain root has.
struct ChainData {
    std::vector<Object*> bones;  // from the root to the last
    Object* effector = nullptr;
    std::array<double, 3> normal{0.0, 0.0, 1.0};
    // The effector's angle to the last bone: row vectors, effector axes seen from the bone.
    std::array<double, 9> effectorAngle{1, 0, 0, 0, 1, 0, 0, 0, 1};
};

// What few objects have: properties, in the order they were made.
struct PropertyData {
    NameTable names;
    std::vector<std::unique_ptr<Property>> properties;
};

// Most objects of a large scene are alike and plain: what only some have stands apart.
struct ZELK_API Object {
    Zelk::CString name;
    Object* parent = nullptr;  // null under the scene root
    Object* firstChild = nullptr;
    Object* lastChild = nullptr;
    Object* previousSibling = nullptr;
    Object* nextSibling = nullptr;
    Object* model = nullptr;  // a model's own is itself; null under the scene root without one
    // posx posy posz rotx roty rotz, seen from the parent. Of bones and effectors it is kept true
    // by the scene: a bone stands at (previous length, 0, 0), an effector at the end of the last
    // bone.
    std::array<double, 6> local{};
    double length = 0.0;          // of a bone
    Object* chainRoot = nullptr;  // of a bone, an effector and the root itself
    std::unique_ptr<ModelData> modelData;
    std::unique_ptr<ChainData> chainData;
    std::unique_ptr<PropertyData> propertyData;          // null without a property
    std::unique_ptr<std::vector<std::uint32_t>> groups;  // ids of its groups; null without any
    // In the order the objects were made, from 1 in a new process. Actions, groups and properties
    // take theirs from the same count; none is ever given out twice, a session's Reset included.
    std::uint32_t id = 0;
    ObjectType type = ObjectType::Null;

    const std::vector<std::unique_ptr<Property>>& Properties() const;
};

class ZELK_API Scene {
  public:
    Scene();
    ~Scene();
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    // Every object that stands in the scene, in the order they were made.
    std::vector<const Object*> Objects() const;
    std::vector<const Object*> Models() const;
    // Null where no object, or no longer one, has that id.
    const Object* FindObject(std::uint32_t id) const;
    const ActionSource* FindAction(std::uint32_t id) const;
    // "Model" or "Model.Object"; empty for an unknown id. Also names actions, groups and
    // properties.
    Zelk::CString FullName(std::uint32_t id) const;

    // What the object that a target of an action of `model` names is, and which channel of it; null
    // where there is none. A target without an object's name ("kine.local.posx") is the model's
    // own. Constant time in the number of objects.
    struct Target {
        const Object* object = nullptr;
        Channel channel = Channel::PosX;
    };
    Target ResolveTarget(const Object& model, const Zelk::CString& target) const;
    Target ResolveTarget(const Object& model, const ActionItem& item) const;

  private:
    friend class SceneEditor;
    // The object of that name in the model, by an empty name the model itself; null without one.
    const Object* FindIn(const Object& model, std::wstring_view name) const;
    // Empty where the object, which may be null, has no such channel.
    static Target TargetOn(const Object* object, Channel channel);

    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace headless
