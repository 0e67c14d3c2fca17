// A parsed skeleton: nodes with channels, and a key for each channel and frame.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "host/scene_objects.h"
#include "mocap/key_array.h"

// The kinds of channels. The numbers from 1 to 7 are also indices in the table of host parameters.
enum ChannelType : std::uint8_t {
    kEmptySlot = 0,
    kPositionX = 1,
    kPositionY = 2,
    kPositionZ = 3,
    kRotationX = 4,
    kRotationY = 5,
    kRotationZ = 6,
    kBoneLength = 7,
    kIgnoredChannel = 255,  // is in the file but is not imported
};

constexpr bool IsPosition(std::uint8_t type) {
    return type >= kPositionX && type <= kPositionZ;
}
constexpr bool IsRotation(std::uint8_t type) {
    return type >= kRotationX && type <= kRotationZ;
}
constexpr bool IsAnimated(std::uint8_t type) {
    return type != kEmptySlot && type != kIgnoredChannel;
}

// One node of a skeleton: a root, joint, bone or end site. Every member is zero, false or empty at
// first.
struct MOCAPMODEL {
    static constexpr int kSlotCount = 7;

    struct CHANNELS {
        std::uint8_t type = kEmptySlot;
        bool hasMinLimit = false;
        bool hasMaxLimit = false;
        KeyArray keys;
        double minLimit = 0.0;  // degrees for rotations
        double maxLimit = 0.0;
    };

    // The seven slots of a node. Each slot is empty or has one channel. Most nodes of a large file
    // have no channel, so the memory of the slots is allocated at the first call of operator[].
    // Before that call, the range from begin() to end() is empty.
    class ChannelSlots {
      public:
        CHANNELS* begin() { return slots_.get(); }
        CHANNELS* end() { return slots_ ? slots_.get() + kSlotCount : nullptr; }
        const CHANNELS* begin() const { return slots_.get(); }
        const CHANNELS* end() const { return slots_ ? slots_.get() + kSlotCount : nullptr; }
        // Throws std::bad_alloc.
        template <std::integral Slot>
        CHANNELS& operator[](Slot slot) {
            if (!slots_) slots_ = std::make_unique<CHANNELS[]>(kSlotCount);
            return slots_[static_cast<std::size_t>(slot)];
        }
        std::uint8_t TypeAt(std::size_t slot) const {
            return slots_ ? slots_[slot].type : std::uint8_t{kEmptySlot};
        }

      private:
        std::unique_ptr<CHANNELS[]> slots_;
    };

    std::unique_ptr<char[]> name;  // the bytes from the file, or made by the parser
    MOCAPMODEL* parent = nullptr;  // null for a root
    std::uint32_t childCount = 0;
    std::uint32_t boneChildCount = 0;  // how many children were not detached when they were added
    std::uint32_t depth = 0;           // 0 for a root
    bool isDetached = false;           // not joined to its parent by a rigid bone
    double offset[3] = {};             // from the parent, in file units
    double globalPosition[3] = {};     // in the rest pose, from the skeleton's origin
    ChannelSlots channels;             // filled from slot 0, in the file's order
    bool isEndSite = false;
    std::uint32_t boneId = 0;    // Acclaim, the number after "id"
    double orientation[3] = {};  // Acclaim bone axis, degrees, X-Y-Z order
    double direction[3] = {};    // Acclaim, from the bone's start to its end
    double length = 0.0;         // Acclaim, already multiplied by the length factor
    Zelk::ChainBone bone;        // the bone of this node in the scene, or empty
    Zelk::Null nullObject;       // the null of this node in the scene, or empty
    // The values of the host's parameters in the base pose. The index is the channel type - 1.
    double basePose[7] = {};
};

// Returns a copy of `text` followed by `tail`, or null when memory runs out.
std::unique_ptr<char[]> CopyText(const char* text, const char* tail = "");

// Returns the first slot of that type, or null when there is none. Throws std::bad_alloc when the
// slots have to be allocated and memory runs out.
MOCAPMODEL::CHANNELS* FindChannel(MOCAPMODEL& node, std::uint8_t type);

// Whether any slot holds a channel that is imported.
bool IsAnimated(const MOCAPMODEL& node);
