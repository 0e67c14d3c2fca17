// Reads or computes the channels of a model's joints.
// Internal to export/.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "export/exported_motion.h"
#include "export/large_array.h"
#include "export/object_channels.h"
#include "export/progress.h"
#include "headless/scene.h"

namespace exporters {

// Which of the angles that give the same rotation are chosen. None is beyond `farthest` degrees, so
// that a 32-bit float can hold it precisely: an angle that would be is brought back by whole turns.
struct AngleChoice {
    // The angles of nulls are those of the scene, which may jump. Otherwise the angles of a null
    // are those of the scene in the first frame, and in each later one those that are nearest to
    // the frame before. The angles of other joints are chosen in that way in any case.
    bool keepsSceneAngles = false;
    double farthest = 360.0;
};

// A joint has six channels: its position as seen from its parent (x, y, z) and its angles in
// degrees (x, y, z; x turns first).
class JointChannels {
  public:
    static constexpr std::size_t kCount = 6;

    // `frames` are the frames to read; there is at least one. With `turnsTop`, the turn of the
    // motion is applied to the joints without a parent. Several threads compute. Keeps references
    // to the scene and to the motion. Throws ExportError if a computed transform is not finite, and
    // what `progress` throws.
    JointChannels(const headless::Scene& scene, const headless::Object& model,
                  const ExportedMotion& motion, std::vector<double> frames, bool turnsTop,
                  const AngleChoice& angles, const Progress& progress);

    struct Range {
        double first = 0.0;  // the value in the first frame
        double least = 0.0;
        double most = 0.0;
    };
    const Range& RangeOf(std::size_t joint, std::size_t channel) const {
        return ranges_[kCount * joint + channel];
    }
    // Writes the values of a channel, one for each frame. Several threads may call this at the same
    // time.
    void Read(std::size_t joint, std::size_t channel, std::span<double> values) const;

  private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    // How a joint's channels are found.
    enum class Way : unsigned char {
        Objects,  // they are those of its object
        Angles,   // the positions are those of its object, the angles are stored
        Poses,    // the poses are evaluated, and all channels are stored
    };

    double* Stored(std::size_t joint, std::size_t channel) {
        return &stored_[slots_[kCount * joint + channel] * frames_.size()];
    }
    void ChooseWays(std::size_t first, std::size_t end, const Progress& progress);
    bool KeepsAngles(std::size_t joint) const;
    void ReserveSlots();
    void EvaluateFrames(std::size_t first, std::size_t end, const Progress& progress);
    void FinishJoint(std::size_t joint, std::span<double> values);
    void ChooseAngles(std::size_t joint);

    const ExportedMotion& motion_;
    std::vector<double> frames_;
    bool turnsTop_;
    AngleChoice choice_;
    ObjectChannels objects_;
    std::vector<Way> ways_;      // for each joint
    std::vector<Range> ranges_;  // kCount for each joint
    std::vector<std::size_t>
        slots_;                  // for each channel, its place in stored_; kNone if it has none
    LargeArray<double> stored_;  // one channel after the other
};

}  // namespace exporters
