// Chooses the frames at which a motion is written.
// Internal to export/.
#pragma once

#include <cstddef>
#include <vector>

#include "export/options.h"
#include "headless/scene.h"

namespace exporters {

// The frames of a motion. If there are none, only the base pose is written.
struct Timeline {
    std::vector<double> frames;  // frame numbers, strictly rising; samples may be between frames
    double secondsPerFrame = 0.0;

    bool IsPose() const { return frames.empty(); }
    // The time in seconds between the first of `frames` and the one with this index.
    double Seconds(std::size_t index) const {
        return (frames[index] - frames.front()) * secondsPerFrame;
    }
};

// Returns the frames at which an active curve of the motion has a key. options.frames keeps those
// in a range; options.resampleTo then replaces them by samples from the first to the last. `motion`
// may be null. Without keys or without a rate the timeline has no frames, and a note says
// so. Throws ExportError if the motion has no frame in the range, if the length of the motion or of
// a frame is not finite, and if there would be more than ten million samples.
Timeline MakeTimeline(const headless::Object& model, const headless::ActionSource* motion,
                      const Options& options, Notes& notes);

// Adds the note that only the base pose of the model is written, because it has no motion.
void NoteNoMotion(const headless::Object& model, Notes& notes);

// Returns the timeline with the same step between all frames, for formats that store only a rate.
// If the steps differ, because keys are missing, the frames become the first one and those that
// follow it by 1, 2, 3, ... up to the last. Throws ExportError if these are more than ten million.
Timeline EvenTimeline(Timeline timeline);

// Seconds from one frame of an even timeline to the next; 0 for a pose.
double SecondsPerStep(const Timeline& timeline);

}  // namespace exporters
