// A parsed skeleton: nodes with channels, and a key for each channel and frame.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "host/scene_objects.h"

struct MOCAP_RAWKEY {
    double time;   // frames, counted from 1
    double value;  // degrees for rotations, file units for positions and lengths
};

// A channel's keys, one for each frame, or null while there is no motion. The pointer is shared
// because the keys of several channels may be in one block of memory, which is freed with the last
// of them.
using KeyArray = std::shared_ptr<MOCAP_RAWKEY[]>;

// Returns uninitialised keys, or null when memory runs out.
KeyArray AllocateKeys(std::uint32_t count);
// Returns several such arrays, or none when memory runs out. Throws std::bad_alloc when memory runs
// out for their list.
std::vector<KeyArray> AllocateKeyArrays(std::uint32_t arrays, std::uint32_t count);

// The kinds of channels. The same numbers select the parameters of the host.
enum ChannelType : std::uint8_t {
    kEmptySlot = 0,
    kPositionX = 1,
    kPositionY = 2,
    kPositionZ = 3,
    kRotationX = 4,
    kRotationY = 5,
    kRotationZ = 6,
    kBoneLength = 7,
    kIgnoredChannel = 255,  // present in the file, not imported
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

// One node of a skeleton: a root, joint, bone or end site. Everything starts as zero, false or
// empty.
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

    // Seven slots. Their memory is allocated when one is first asked for by index, because most
    // nodes of a large file have no channel. Until then begin() and end() are an empty range.
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

    std::unique_ptr<char[]> name;  // as read from the file
    MOCAPMODEL* parent = nullptr;  // null for a root
    std::uint32_t childCount = 0;
    std::uint32_t boneChildCount = 0;  // children that were not detached when they were attached
    std::uint32_t depth = 0;           // 0 for a root
    bool isDetached = false;           // not joined to its parent by a rigid bone
    double offset[3] = {};             // from the parent, file units
    double globalPosition[3] = {};     // in skeleton space
    ChannelSlots channels;             // filled from the first, in the file's order
    bool isEndSite = false;
    std::uint32_t boneId = 0;    // Acclaim
    double orientation[3] = {};  // Acclaim bone axis, degrees, X-Y-Z order
    double direction[3] = {};    // Acclaim, from the bone's start to its end
    double length = 0.0;         // Acclaim, with the length multiplier
    Zelk::ChainBone bone;        // what was made for this node in the scene
    Zelk::Null nullObject;
    double basePose[7] = {};  // as the host reports it, by channel type - 1
};

// Returns a copy of `text` followed by `tail`, or null when memory runs out.
std::unique_ptr<char[]> CopyText(const char* text, const char* tail = "");

// Returns the first slot of that type, or null when there is none. Throws std::bad_alloc when the
// slots have to be allocated and memory runs out.
MOCAPMODEL::CHANNELS* FindChannel(MOCAPMODEL& node, std::uint8_t type);

// Whether any slot holds a channel that is imported.
bool IsAnimated(const MOCAPMODEL& node);
