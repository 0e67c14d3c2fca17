// Builds a motion in the form that FBX needs: a curve for each channel of a joint that changes.
// Internal to export/.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "export/exported_motion.h"
#include "export/fbx_node.h"
#include "export/joint_channels.h"
#include "export/large_array.h"
#include "export/number_deflate.h"
#include "export/progress.h"
#include "headless/scene.h"

namespace exporters {

// The number of units of FBX's times in one second.
inline constexpr double kFbxSecond = 46'186'158'000.0;

// The times of keys as array properties. Equal times are compressed once.
class FbxTimes {
  public:
    // Returns the array of these times. Its bytes live as long as this object.
    FbxArray ArrayOf(const std::vector<std::int64_t>& times);

  private:
    struct Entry {
        std::vector<std::int64_t> times;
        std::string deflated;  // empty if that would not be shorter
    };
    std::deque<Entry> entries_;
};

// The keys of a channel. Between two keys the value changes evenly.
struct FbxCurve {
    std::size_t joint = 0;
    std::size_t channel = 0;  // as in JointChannels
    double rest = 0.0;        // the value in the base pose
    FbxArray times;
    FbxArray values;
};

class FbxMotion {
  public:
    // `rest` has the values of all channels in the base pose: JointChannels::kCount for each joint.
    // `motion` must have frames. The turn of the motion is not applied. A channel gets no curve if
    // its value is always that of the base pose, and one with two keys, at its ends, if it has
    // another value that never changes. Only the rotation of the first joint always has all keys,
    // so that no motion is without curves. With `compress`, the values are compressed. Throws
    // ExportError if a number does not fit, and what `progress` throws. `times` must live as long
    // as this object.
    FbxMotion(const headless::Scene& scene, const headless::Object& model,
              const ExportedMotion& motion, const std::vector<double>& rest, bool compress,
              FbxTimes& times, const Progress& progress);

    const std::string& Name() const { return name_; }
    double FramesPerSecond() const { return framesPerSecond_; }
    // The time of the last key. The time of the first one is 0.
    std::int64_t Stop() const { return stop_; }
    // In the order of the joints and of their channels.
    const std::vector<FbxCurve>& Curves() const { return curves_; }

  private:
    void ChooseCurves(const JointChannels& channels, const std::vector<double>& rest,
                      double stillPosition, FbxTimes& times,
                      const std::vector<std::int64_t>& keyTimes);
    void ReadValues(const JointChannels& channels, std::size_t frames, const Progress& progress);
    Deflation ChooseDeflation() const;
    void Compress();

    std::string name_;
    double framesPerSecond_ = 0.0;
    std::int64_t stop_ = 0;
    LargeArray<float> values_;           // of one curve after the other
    std::vector<std::string> deflated_;  // for each curve, if the values are compressed
    std::vector<FbxCurve> curves_;
};

}  // namespace exporters
