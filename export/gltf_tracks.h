// A motion as glTF animates it: for each joint its rotations, and its translations where it moves,
// at times that all joints share.
// Internal to export/.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "export/exported_motion.h"
#include "headless/scene.h"

namespace exporters {

// The value as glTF holds it. Throws ExportError where it is not finite there.
float GltfFloat(double value);
// Throws ExportError where GltfFloat does, for numbers that are written as text.
void RequireGltfFloat(double value);

// Values of one property of one joint, frame after frame. As long as they are those of its node
// they are not kept, so that a property that never changes needs no memory.
template <std::size_t kWidth>
class GltfTrack {
  public:
    using Value = std::array<float, kWidth>;

    // `rest` is the node's value; `frames` how many Add calls follow. With `isKept`, all are kept.
    void Start(const Value& rest, std::size_t frames, bool isKept) {
        rest_ = last_ = rest;
        frames_ = frames;
        if (isKept) Keep(0);
    }
    const Value& Last() const { return last_; }
    void Add(std::size_t frame, const Value& value) {
        last_ = value;
        if (!isKept_) {
            if (value == rest_) return;
            Keep(frame);
        }
        values_.push_back(value);
    }
    // One for each frame, or none where all are that of the node.
    const std::vector<Value>& Values() const { return values_; }

  private:
    // From now on; the `before` values so far were those of the node.
    void Keep(std::size_t before) {
        isKept_ = true;
        values_.reserve(frames_);
        values_.assign(before, rest_);
    }

    bool isKept_ = false;
    Value rest_{};
    Value last_{};
    std::size_t frames_ = 0;
    std::vector<Value> values_;
};

struct GltfMotion {
    std::string name;
    double firstFrame = 0.0;
    double secondsPerFrame = 0.0;            // of the motion, also where it was resampled
    double sourceSecondsPerFrame = 0.0;      // as the file has it; 0: it does not say
    std::vector<float> times;                // seconds, strictly rising from 0
    std::vector<GltfTrack<4>> rotations;     // x y z w; one for each joint
    std::vector<GltfTrack<3>> translations;  // one for each joint
};

// Rotations are kept for all joints that have a curve for one, and for others that turn.
// `motion` must have frames.
GltfMotion GatherMotion(const headless::Scene& scene, const headless::Object& model,
                        ExportedMotion& motion);

}  // namespace exporters
