// Chooses the frames at which a motion is written.
// Internal to export/.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "export/options.h"
#include "headless/scene.h"

namespace exporters {

// The frames of a motion at which it is written. If there are no frames, only the base pose is
// written.
struct Timeline {
    std::vector<double> frames;  // strictly rising; the frame numbers of samples may be fractions
    double secondsPerFrame = 0.0;
    bool areSamples = false;  // whether Options::resampleTo chose the frames

    bool IsPose() const { return frames.empty(); }
    // Returns the time in seconds from frames[0] to frames[index].
    double Seconds(std::size_t index) const {
        return (frames[index] - frames.front()) * secondsPerFrame;
    }
    // Returns the whole number by which people know frames[index]. It is the frame's own number.
    // Samples are counted on from the number of the first one.
    std::int64_t Number(std::size_t index) const;
};

// Returns the frames at which an active curve of the motion has a key. If options.frames is set,
// frames outside that range are removed. If options.resampleTo is set, samples from the first to
// the last remaining frame then replace the frames. If `motion` is null, or has no keys or no rate,
// the timeline has no frames, and a note is added to `notes`. Throws ExportError if the motion has
// no frame in the range, if the length of the motion or of a frame is not finite, and if there
// would be more than ten million samples.
Timeline MakeTimeline(const headless::Object& model, const headless::ActionSource* motion,
                      const Options& options, Notes& notes);

// Adds the note that only the base pose of the model is written, because it has no motion.
void NoteNoMotion(const headless::Object& model, Notes& notes);

// Returns a timeline with the same step between all frames, for formats that store only a rate. If
// the steps of `timeline` differ, the result has all frames from the first to the last in steps
// of 1. Throws ExportError if the result would have more than ten million frames.
Timeline EvenTimeline(Timeline timeline);

// Returns the seconds from one frame to the next in a timeline with equal steps. If the timeline
// has one frame, returns the seconds per frame. Returns 0 if it has none.
double SecondsPerStep(const Timeline& timeline);

}  // namespace exporters
