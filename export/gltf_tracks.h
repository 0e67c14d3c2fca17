// Builds a motion in the form that glTF needs: one list of times for all joints, and lists of
// rotations and translations for the joints that move.
// Internal to export/.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "export/exported_motion.h"
#include "export/gltf_frames.h"
#include "export/large_array.h"
#include "export/progress.h"
#include "headless/scene.h"

namespace exporters {

// The values of one property of one joint, frame by frame. By default, the values are stored only
// if one of them differs from the value of the joint's node. A property that never changes then
// needs no memory.
template <std::size_t kWidth>
class GltfTrack {
  public:
    using Value = std::array<float, kWidth>;

    // `rest` is the node's value. With `storesAll`, all values are stored even if they never
    // change.
    void Start(const Value& rest, std::size_t frames, bool storesAll) {
        rest_ = rest;
        frames_ = frames;
        if (storesAll) Reserve();
    }
    const Value& Rest() const { return rest_; }
    // Returns where the values are stored, one for each frame.
    Value* Reserve() {
        if (values_.size() == 0) values_ = LargeArray<Value>(frames_);
        return &values_[0];
    }
    // The stored values, one for each frame. Empty if the values are not stored.
    std::span<const Value> Values() const { return {values_.data(), values_.size()}; }
    bool IsStored() const { return values_.size() > 0; }

  private:
    Value rest_{};
    std::size_t frames_ = 0;
    LargeArray<Value> values_;
};

struct GltfMotion {
    std::string name;
    double firstFrame = 0.0;  // the frame number at times[0]
    // The seconds from one frame number to the next. The step between two samples may differ from
    // it.
    double secondsPerFrame = 0.0;
    double framesPerSecond = 0.0;  // of the samples or, if there are none, of the frame numbers
    double sourceSecondsPerFrame = 0.0;      // as in the file; 0 if the file has no frame time
    std::vector<float> times;                // seconds, strictly rising from 0
    std::vector<GltfTrack<4>> rotations;     // x y z w; one for each joint
    std::vector<GltfTrack<3>> translations;  // one for each joint
};

// Builds the motion, on several threads. `motion` must have frames. The rotations of a joint are
// stored if one of these conditions is true:
// - It is the first joint.
// - An active curve drives its rotation.
// - In some frame, its rotation differs from the rotation of its node.
// The translations of a joint are stored if, in some frame, its translation differs from the
// translation of its node. Throws ExportError if a number is not finite or too large for 32 bits,
// and what `progress` throws.
GltfMotion BuildGltfMotion(const headless::Scene& scene, const headless::Object& model,
                           const ExportedMotion& motion, const GltfFrames& gltfFrames,
                           const Progress& progress);

}  // namespace exporters
