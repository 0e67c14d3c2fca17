// What the scene keeps beyond the records that everybody may read.
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

// What stands inside an exported class, and is not exported with it.
#define HEADLESS_HIDDEN __attribute__((visibility("hidden")))

// Every object of a scene is one of these. `global` is its scene transform where `globalValid` says
// so; it is then valid of everything that it was computed from too. Null until somebody asks for
// it, which nobody does for most. The two links let walks over any number of objects do without
// memory, so that none can stop half way.
struct Node : Object {
    bool globalValid = false;
    bool effectorDirty = false;  // an effector whose local state waits to be worked out
    bool dying = false;          // about to be deleted
    std::unique_ptr<Transform> global;
    Node* walkNext = nullptr;  // in the walk that is under way
    union {
        Node* dirtyNext = nullptr;  // of an effector, in Scene::Impl::dirtyEffectors
        std::uint32_t boneIndex;    // of a bone, its place in the chain
    };

    Transform& MakeGlobal() {
        if (!global) global = std::make_unique<Transform>();
        return *global;
    }
};

// So that the next push_back, or the next few, cannot fail.
template <class Item>
void MakeRoom(std::vector<Item>& items, std::size_t count = 1) {
    if (items.capacity() - items.size() < count)
        items.reserve(std::max<std::size_t>(4, 2 * items.size()));
}

inline Node& AsNode(Object& object) {
    return static_cast<Node&>(object);
}
inline const Node& AsNode(const Object& object) {
    return static_cast<const Node&>(object);
}

// What an id stands for, or nothing any more.
using Slot = std::variant<std::monostate, std::unique_ptr<Node>, ActionSource*, Group*, Property*>;

// Null where the slot holds something else.
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
    std::deque<Slot> slots;  // by id, from `firstId`
    // Parent of what has none. Its table of object names holds all models, wherever they hang.
    Node root;
    std::set<std::uint32_t> models;         // ids
    std::vector<std::uint32_t> properties;  // ids of those that stand, in the order they were made
    std::size_t longestModelName = 0;       // ever
    std::size_t longestPropertyName = 0;    // ever
    // Who attached an action that is not its own.
    std::unordered_map<const ActionSource*, std::vector<Node*>> attachedElsewhere;
    // Ids of chain roots, a ring: these chains' scene transforms are kept.
    std::array<std::uint32_t, 1024> latestChains{};
    std::size_t nextLatestChain = 0;
    Node* dirtyEffectors = nullptr;                      // a list; empty between operations
    std::weak_ptr<const std::vector<double>> lastTimes;  // of the last keys that were set
};

}  // namespace headless
