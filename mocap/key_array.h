// The keys of a channel: a time and a value for each frame.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

struct MOCAP_RAWKEY {
    double time;   // frames, counted from 1
    double value;  // degrees for rotations, file units for positions and lengths
};

// The keys of a channel, one for each frame, or null if the channel has no keys. The times and the
// values are two arrays, because all channels of a motion can share one array of times, and because
// a host can keep both arrays without copying them. The values of several channels may be in one
// block of memory. Therefore the arrays are shared, and the block is freed when nobody needs it.
class KeyArray {
  public:
    using Numbers = std::shared_ptr<double[]>;

    // A key in the array. Assignments to its members change the array.
    struct Key {
        double& time;
        double& value;
        // The members refer to the array, so a constant Key can be assigned to.
        // NOLINTNEXTLINE(misc-unconventional-assign-operator)
        const Key& operator=(const MOCAP_RAWKEY& key) const {
            time = key.time;
            value = key.value;
            return *this;
        }
    };

    KeyArray() = default;
    KeyArray(Numbers times, Numbers values)
        : times_(std::move(times)), values_(std::move(values)) {}

    explicit operator bool() const { return values_ != nullptr; }
    bool operator==(std::nullptr_t) const { return values_ == nullptr; }
    void reset() { *this = KeyArray(); }
    Key operator[](std::size_t frame) const { return {times_.get()[frame], values_.get()[frame]}; }
    // Null if there are no keys.
    const Numbers& Times() const { return times_; }
    const Numbers& Values() const { return values_; }

  private:
    Numbers times_;
    Numbers values_;
};

// Returns an array of `count` uninitialised numbers, or null when memory runs out.
KeyArray::Numbers AllocateNumbers(std::uint32_t count);
// Returns an array of `count` uninitialised keys, with times of its own. Returns null when memory
// runs out.
KeyArray AllocateKeys(std::uint32_t count);
// Returns `arrays` arrays of `count` uninitialised values. All of them have these times. Returns an
// empty vector when memory for the values runs out. Throws std::bad_alloc when memory for the
// vector runs out.
std::vector<KeyArray> AllocateKeyArrays(std::uint32_t arrays, std::uint32_t count,
                                        const KeyArray::Numbers& times);
