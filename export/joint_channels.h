// Reads or computes the channels of a model's joints.
// Internal to export/.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "export/exported_motion.h"
#include "export/large_array.h"
#include "export/object_channels.h"
#include "export/progress.h"
#include "headless/scene.h"

namespace exporters {

// A joint has six channels: its position as seen from its parent (x, y, z) and its angles in
// degrees (x, y, z; x turns first). The angles of a null are those of the scene, as they are. The
// angles of other joints are computed and do not jump where a joint turns beyond 180 degrees. If a
// joint turns by more than two turns, its angles are less than a turn apart, because a 32-bit float
// could not hold larger ones precisely.
class JointChannels {
  public:
    static constexpr std::size_t kCount = 6;

    // `frames` are the frames to read; there is at least one. With `turnsTop`, the turn of the
    // motion is applied to the joints without a parent. Several threads compute. Keeps references
    // to the scene and to the motion. Throws ExportError if a computed transform is not finite, and
    // what `progress` throws.
    JointChannels(const headless::Scene& scene, const headless::Object& model,
                  const ExportedMotion& motion, std::vector<double> frames, bool turnsTop,
                  const Progress& progress);

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

    double* Stored(std::size_t joint, std::size_t channel) {
        return &stored_[(kCount * slots_[joint] + channel) * frames_.size()];
    }
    void MeasureObjects(std::size_t first, std::size_t end, std::vector<char>& turnsFar,
                        const Progress& progress);
    void ChooseStored(const std::vector<char>& turnsFar);
    void EvaluateFrames(std::size_t first, std::size_t end, const Progress& progress);
    void FinishStored(std::size_t joint);
    void Measure(std::size_t joint, std::size_t channel, std::span<const double> values);
    bool TurnsFar(std::size_t joint) const;
    void Unwind(std::size_t joint);
    void Rewind(std::size_t joint);

    const ExportedMotion& motion_;
    std::vector<double> frames_;
    bool turnsTop_;
    ObjectChannels objects_;
    std::vector<Range> ranges_;       // kCount for each joint
    std::vector<std::size_t> slots_;  // for each joint, where it is stored; kNone if it is not
    LargeArray<double> stored_;       // of each stored joint, one channel after the other
};

}  // namespace exporters
