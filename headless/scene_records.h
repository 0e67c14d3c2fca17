// The records of the scene that only the sources of this folder see.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <set>
#include <unordered_map>
#include <variant>
#include <vector>

#include "headless/parts.h"
#include "headless/scene.h"
#include "headless/transform.h"

namespace headless {

// Marks a class that is nested in an exported class but is not exported itself.
#define HEADLESS_HIDDEN __attribute__((visibility("hidden")))

// Every object of a scene is a Node. `global` is the object's global transform. It is right only
// while `globalValid` is true. The global transforms that it was computed from are then valid, too.
// `global` is allocated when it is first needed, because most objects never need it. The pointers
// `walkNext` and `dirtyNext` link objects into lists. So a walk over any number of objects
// allocates nothing and cannot fail half way.
struct Node : Object {
    bool globalValid = false;
    bool effectorDirty = false;  // true if this effector's local transform has to be computed again
    bool dying = false;          // true while the object is being deleted
    std::unique_ptr<Transform> global;
    Node* walkNext = nullptr;  // the next object in the current walk
    union {
        Node* dirtyNext = nullptr;  // of an effector: see Scene::Impl::dirtyEffectors
        std::uint32_t boneIndex;    // of a bone: its index in ChainData::bones
    };

    Transform& AllocateGlobal() {
        if (!global) global = std::make_unique<Transform>();
        return *global;
    }
};

// Reserves memory so that the next `count` calls of push_back cannot fail.
template <class Item>
void ReserveRoom(std::vector<Item>& items, std::size_t count = 1) {
    if (items.capacity() - items.size() < count)
        items.reserve(std::max<std::size_t>(4, 2 * items.size()));
}

inline Node& AsNode(Object& object) {
    return static_cast<Node&>(object);
}
inline const Node& AsNode(const Object& object) {
    return static_cast<const Node&>(object);
}

// What an id refers to: an object, an action, a group or a property. The slot holds std::monostate
// if nothing was made with that id, or if it was deleted.
using Slot = std::variant<std::monostate, std::unique_ptr<Node>, ActionSource*, Group*, Property*>;

// Returns the record of type Record in the slot. Null if `slot` is null or holds something else.
template <class Record>
Record* RecordIn(const Slot* slot) {
    Record* const* const held = slot == nullptr ? nullptr : std::get_if<Record*>(slot);
    return held == nullptr ? nullptr : *held;
}

struct HEADLESS_HIDDEN Scene::Impl {
    explicit Impl(std::uint32_t firstId);

    const Slot* Find(std::uint32_t id) const;
    Node* FindNode(std::uint32_t id) const;
    void Forget(std::uint32_t id) { slots[id - firstId] = Slot(); }
    std::uint32_t NextId() const { return firstId + static_cast<std::uint32_t>(slots.size()); }

    std::uint32_t firstId;   // the first id that this scene could give out
    std::deque<Slot> slots;  // slots[i] belongs to the id firstId + i
    // The scene root. Its table of object names holds the names of the objects that are in no
    // model, and the names of all models, also of those that are in another model.
    Node root;
    std::set<std::uint32_t> models;  // the ids of all models
    // The ids of all properties, in the order in which they were made.
    std::vector<std::uint32_t> properties;
    // The lengths, in characters, of the longest names that any model and any property ever had.
    std::size_t longestModelName = 0;
    std::size_t longestPropertyName = 0;
    // For an action, the models whose ModelData::attached is that action. The owner of the action
    // is not listed.
    std::unordered_map<const ActionSource*, std::vector<Node*>> attachedElsewhere;
    // The ids of the roots of the chains that were made last, in a ring: a new id replaces the
    // oldest one. The chain whose id is replaced loses its stored global transforms.
    std::array<std::uint32_t, 1024> latestChains{};
    std::size_t nextLatestChain = 0;  // the index of the oldest id in `latestChains`
    // The first effector in the list of those whose `effectorDirty` is true. `dirtyNext` points to
    // the next effector in the list. Between operations the list is empty, unless memory ran out.
    Node* dirtyEffectors = nullptr;
    std::weak_ptr<const NumberArray> lastTimes;  // the times of the keys that were set last
};

}  // namespace headless
