// A motion as glTF animates it: for each joint its rotations, and its translations where it moves,
// at times that all share.
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

// Values of one property of one joint, frame after frame; empty where it keeps that of its node.
template <std::size_t kWidth>
class GltfTrack {
  public:
    using Value = std::array<float, kWidth>;

    // `rest` is the node's value; `frames` how many Add calls follow.
    void Start(const Value& rest, std::size_t frames, bool isKept) {
        rest_ = last_ = rest;
        frames_ = frames;
        if (isKept) values_.reserve(frames);
    }
    const Value& Last() const { return last_; }
    void Add(std::size_t frame, const Value& value) {
        last_ = value;
        if (values_.capacity() == 0) {
            if (value == rest_) return;
            values_.reserve(frames_);
            values_.assign(frame, rest_);
        }
        values_.push_back(value);
    }
    const std::vector<Value>& Values() const { return values_; }

  private:
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
