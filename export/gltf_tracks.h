// Builds a motion as glTF animates it: for each joint its rotations and, if they change, its
// translations, at times that all joints share.
// Internal to export/.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "export/exported_motion.h"
#include "headless/scene.h"

namespace exporters {

// Rounds the value to 32 bits, as the buffer holds it. Throws ExportError if the value is not
// finite or too large for 32 bits.
float GltfFloat(double value);
// Throws ExportError if the value is not finite or too large for 32 bits. Numbers in the JSON are
// checked with this, because readers store them in 32 bits.
void RequireGltfFloat(double value);

// The values of one property of one joint, frame by frame. As long as all of them are equal to the
// value of the joint's node, they are not stored: a property that never changes needs no memory.
template <std::size_t kWidth>
class GltfTrack {
  public:
    using Value = std::array<float, kWidth>;

    // `rest` is the node's value. `frames` is the number of calls of Add that follow. With
    // `storesAll`, all values are stored even if they never change.
    void Start(const Value& rest, std::size_t frames, bool storesAll) {
        rest_ = last_ = rest;
        frames_ = frames;
        if (storesAll) StartStoring(0);
    }
    // The value that was added last, or the node's value before the first.
    const Value& Last() const { return last_; }
    // `frame` counts from 0.
    void Add(std::size_t frame, const Value& value) {
        last_ = value;
        if (!isStoring_) {
            if (value == rest_) return;
            StartStoring(frame);
        }
        values_.push_back(value);
    }
    // One for each frame; empty if all are equal to the node's value and need not be stored.
    const std::vector<Value>& Values() const { return values_; }

  private:
    // Stores the values from now on. The first `skipped` values were equal to the node's value.
    void StartStoring(std::size_t skipped) {
        isStoring_ = true;
        values_.reserve(frames_);
        values_.assign(skipped, rest_);
    }

    bool isStoring_ = false;
    Value rest_{};
    Value last_{};
    std::size_t frames_ = 0;
    std::vector<Value> values_;
};

struct GltfMotion {
    std::string name;
    double firstFrame = 0.0;                 // frame number of the first time
    double secondsPerFrame = 0.0;            // of the motion's frames, not of samples
    double sourceSecondsPerFrame = 0.0;      // as in the file; 0 if the file has no frame time
    std::vector<float> times;                // seconds, strictly rising from 0
    std::vector<GltfTrack<4>> rotations;     // x y z w; one for each joint
    std::vector<GltfTrack<3>> translations;  // one for each joint
};

// Stores rotations for the first joint, for all joints that have a curve of a rotation and for the
// others whose rotation changes; stores translations for joints whose translation changes. `motion`
// must have frames. Throws ExportError if a number is not finite or too large for 32 bits.
GltfMotion BuildGltfMotion(const headless::Scene& scene, const headless::Object& model,
                           ExportedMotion& motion);

}  // namespace exporters
