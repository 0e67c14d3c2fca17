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

// Every object of a scene is a Node. `global` is its global transform and is right only while
// `globalValid` is true; the global transforms that it was computed from are valid then, too. It is
// allocated when it is first needed, because most objects never need it. The links `walkNext` and
// `dirtyNext` allow a walk over any number of objects that allocates nothing, so that it cannot
// fail half way.
struct Node : Object {
    bool globalValid = false;
    bool effectorDirty = false;  // an effector whose local transform has to be computed again
    bool dying = false;          // about to be deleted
    std::unique_ptr<Transform> global;
    Node* walkNext = nullptr;  // the next one in the current walk
    union {
        Node* dirtyNext = nullptr;  // of an effector: the next in Scene::Impl::dirtyEffectors
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

// What has a certain id; std::monostate if that was deleted or never made.
using Slot = std::variant<std::monostate, std::unique_ptr<Node>, ActionSource*, Group*, Property*>;

// The record of that type in the slot. Null if the slot is null or holds something else.
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

    std::uint32_t firstId;
    std::deque<Slot> slots;  // slots[i] is that of the id firstId + i
    // The scene root. Its table of object names holds the objects that are in no model, and all
    // models wherever they are.
    Node root;
    std::set<std::uint32_t> models;         // ids
    std::vector<std::uint32_t> properties;  // ids, in the order in which they were made
    std::size_t longestModelName = 0;       // characters, of all that ever were
    std::size_t longestPropertyName = 0;    // characters, of all that ever were
    // For an action the models, except its owner, whose ModelData::attached is that action.
    std::unordered_map<const ActionSource*, std::vector<Node*>> attachedElsewhere;
    // A ring of chain roots' ids. The global transforms of these chains are kept.
    std::array<std::uint32_t, 1024> latestChains{};
    std::size_t nextLatestChain = 0;  // the entry that is replaced next
    // A list, empty between operations unless memory ran out.
    Node* dirtyEffectors = nullptr;
    std::weak_ptr<const std::vector<double>> lastTimes;  // of the last keys that were set
};

}  // namespace headless
