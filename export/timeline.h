// The moments at which a motion is written.
// Internal to export/.
#pragma once

#include <cstddef>
#include <vector>

#include "export/options.h"
#include "headless/scene.h"

namespace exporters {

// Either the key times of a motion, or, without frames, nothing but the base pose.
struct Timeline {
    std::vector<double> frames;  // frame numbers, strictly rising
    double secondsPerFrame = 0.0;

    bool IsPose() const { return frames.empty(); }
    // From the first frame on.
    double Seconds(std::size_t index) const {
        return (frames[index] - frames.front()) * secondsPerFrame;
    }
};

// Every time at which some curve of the motion has a key, within the range that the options ask
// for, or those of the rate that they ask for. `motion` may be null. Without keys or without a rate
// there are no frames, and a note says so. Throws ExportError where the times make no sense and
// where the motion has no frame in the range.
Timeline MakeTimeline(const headless::Object& model, const headless::ActionSource* motion,
                      const Options& options, Notes& notes);

// The same with one step between all frames, for formats that know only a rate: where keys are
// missing, the whole frame numbers between the first and the last.
Timeline EvenTimeline(Timeline timeline);

// Seconds from one frame of an even timeline to the next; 0 for a pose.
double SecondsPerStep(const Timeline& timeline);

}  // namespace exporters
