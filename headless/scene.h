// The scene of the embedded host: its objects, actions, groups and clips as plain records in
// memory. The plug-in changes them through the classes of host/; applications and tests read them
// here. The scene owns every record. Const functions change no hidden state, so several threads may
// read a scene while no thread changes it. Positions and lengths are in scene units, rotations in
// degrees, key times in frames, ActionSource::animEnd in seconds.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "headless/name_table.h"
#include "headless/number_array.h"
#include "host/export.h"
#include "host/ref.h"
#include "host/string.h"

namespace headless {

enum class ObjectType : std::uint8_t { Model, Null, ChainRoot, ChainBone, ChainEffector };

// The channels of an object, in the order of Object::local; `BoneLength` is Object::length.
enum class Channel : std::uint8_t { PosX, PosY, PosZ, RotX, RotY, RotZ, BoneLength };

struct Object;

// The keys of a curve: values[i] belongs to times[i]. The times may be in any order and need not be
// finite. Both pointers are null until keys are set. The arrays never change afterwards, so an
// action item that is made from a curve shares the curve's arrays. Two curves
// share the array of times if they get keys with the same times one directly after the other, and
// if no older keys are kept.
struct Keys {
    std::shared_ptr<const NumberArray> times;
    std::shared_ptr<const NumberArray> values;
    std::size_t Count() const { return times ? times->size() : 0; }
};

struct Curve {
    std::int32_t interpolation = 0;  // 1 is linear (Zelk::zkLinearInterpolation), 0 is not set
    Keys keys;
};

// One item of an action: a static value or a curve for one target. The target is the full name of a
// channel without the model's name, such as "LeftArm.kine.local.rotx". A large scene has millions
// of items, so an item is small. It shares the text of the object's name with the object, and
// stores the channel as a number.
struct ZELK_API ActionItem {
    Zelk::CString object;  // the object's name; empty: the model itself
    // Empty if the target names no channel; `object` is then the whole target.
    std::optional<Channel> channel;
    bool active = true;  // an inactive item has no effect

    explicit ActionItem(double value) : value_(value) {}
    explicit ActionItem(std::unique_ptr<const Curve> curve)
        : isCurve_(true), curve_(curve.release()) {}
    ActionItem(ActionItem&& other) noexcept;
    ActionItem& operator=(ActionItem&&) = delete;
    ~ActionItem() {
        if (isCurve_) delete curve_;
    }

    bool IsCurve() const { return isCurve_; }
    // The static value; 0 for a curve item.
    double Value() const { return isCurve_ ? 0.0 : value_; }
    // Must only be called for a curve item.
    const Curve& GetCurve() const { return *curve_; }
    // The whole target, as it was given.
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
    double animEnd = 0.0;          // the length of the action in seconds
    std::deque<ActionItem> items;  // in the order in which they were added
    Object* owner = nullptr;       // a model, or the scene root
};

struct Group {
    std::uint32_t id = 0;
    Zelk::CString name;
    std::vector<std::uint32_t> members;  // object ids
    Object* owner = nullptr;             // a model, or the scene root
};

// A motion in the model's mixer. `source` is the id of the action that is the motion.
struct Clip {
    Zelk::CString name;
    std::uint32_t source = 0;
};

// A custom property of an object: a list of named curves.
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

// The data that only a model has.
struct ModelData {
    NameTable objectNames;  // the names of the model's objects and of the model itself
    NameTable actionNames;
    NameTable groupNames;
    NameTable clipNames;
    std::vector<std::unique_ptr<ActionSource>> actions;
    std::vector<std::unique_ptr<Group>> groups;
    std::vector<Clip> clips;
    // The action whose curves "ApplyAction" attached last; null if there is none. The curves do not
    // change the objects' local transforms, because this host does not play motions.
    // MotionEvaluator computes the transforms at a frame.
    const ActionSource* attached = nullptr;
};

// The data that only a chain root has.
struct ChainData {
    std::vector<Object*> bones;  // in order; the first one is next to the root
    Object* effector = nullptr;  // null if it was deleted
    // The normal that the chain was created with, in scene space. The z axis of a new bone is as
    // close to the normal as possible.
    std::array<double, 3> normal{0.0, 0.0, 1.0};
    // The rotation of the effector relative to the last bone, or to the root if the chain has no
    // bones. The nine numbers are the effector's x, y and z axis as seen from that bone or root.
    std::array<double, 9> effectorAngle{1, 0, 0, 0, 1, 0, 0, 0, 1};
};

// The data that only an object with properties has. The properties are in the order in which they
// were made.
struct PropertyData {
    NameTable names;
    std::vector<std::unique_ptr<Property>> properties;
};

// Most objects of a large scene are nulls and bones. Data that only some objects have is allocated
// separately, so that nulls and bones stay small.
struct ZELK_API Object {
    Zelk::CString name;
    Object* parent = nullptr;  // null if the object is directly under the scene root
    Object* firstChild = nullptr;
    Object* lastChild = nullptr;
    Object* previousSibling = nullptr;
    Object* nextSibling = nullptr;
    // The model that the object belongs to; a model belongs to itself. Null if the object is in no
    // model.
    Object* model = nullptr;
    // The local transform: posx, posy, posz, rotx, roty, rotz. x rotates first, then y, then z; the
    // translation comes last. The scene itself computes the position of a bone: (length of the bone
    // before it, 0, 0), or zero for the first bone. The scene also computes the whole
    // transform of an effector, which is at the end of the last bone.
    std::array<double, 6> local{};
    double length = 0.0;  // the length of a bone; 0 for other objects
    // The root of the chain that a bone or an effector belongs to; for a chain root, the object
    // itself. Null for other objects, and for an effector whose chain was deleted.
    Object* chainRoot = nullptr;
    std::unique_ptr<ModelData> modelData;                // null unless it is a model
    std::unique_ptr<ChainData> chainData;                // null unless it is a chain root
    std::unique_ptr<PropertyData> propertyData;          // null if it has no property
    std::unique_ptr<std::vector<std::uint32_t>> groups;  // ids of the groups it is in; null if none
    // Objects, actions, groups and properties are numbered together, from 1, in the order in which
    // they are made. A session never uses an id again, not even after its Reset.
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

    // All objects without the scene root, in the order in which they were made.
    std::vector<const Object*> Objects() const;
    std::vector<const Object*> Models() const;
    // FindObject returns null if no object has that id; FindAction returns null if no action has
    // it.
    const Object* FindObject(std::uint32_t id) const;
    const ActionSource* FindAction(std::uint32_t id) const;
    // The full name of an object is "Model" or "Model.Object". The full name of an action, a group
    // or a property is the full name of its owner, a dot, and its own name. The result is empty if
    // the id is unknown.
    Zelk::CString FullName(std::uint32_t id) const;

    // The object of `model` and the channel that the target of an action item names. `object` is
    // null if there is no such object or channel. A target without an object's name
    // ("kine.local.posx") is a channel of the model itself. The time of the search does not depend
    // on the number of objects.
    struct Target {
        const Object* object = nullptr;
        Channel channel = Channel::PosX;
    };
    Target ResolveTarget(const Object& model, const Zelk::CString& target) const;
    Target ResolveTarget(const Object& model, const ActionItem& item) const;

  private:
    friend class SceneEditor;
    // The object called `name` in the model, or the model itself if `name` is empty. Null if there
    // is no such object.
    const Object* FindIn(const Object& model, std::wstring_view name) const;
    // Target::object of the result is null if the parameter `object` is null or has no such
    // channel.
    static Target TargetOn(const Object* object, Channel channel);

    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace headless
