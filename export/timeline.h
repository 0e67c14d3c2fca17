// Chooses the frames at which a motion is written.
// Internal to export/.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "export/options.h"
#include "headless/scene.h"

namespace exporters {

// The frames of a motion at which it is written. If there are no frames, only the base pose is
// written.
struct Timeline {
    std::vector<double> frames;  // strictly rising; the frame numbers of samples may be fractions
    double secondsPerFrame = 0.0;
    // Options::resampleTo, if it chose the frames. They then have the same step.
    std::optional<double> sampleRate = std::nullopt;

    bool IsPose() const { return frames.empty(); }
    // Returns the time in seconds from frames[0] to frames[index].
    double Seconds(std::size_t index) const {
        if (sampleRate) return static_cast<double>(index) / *sampleRate;
        return (frames[index] - frames.front()) * secondsPerFrame;
    }
    // Returns the whole number by which people know frames[index]. It is the frame's own number.
    // Samples are counted on from the number of the first one.
    std::int64_t Number(std::size_t index) const;
};

// Returns the frames at which an active curve of the motion has a key. If options.frames is set,
// frames outside that range are removed. If options.resampleTo is set, the frames are samples
// instead: from the first key, or from the beginning of the range if that is later, to the last key
// or the end of the range. If `motion` is null, or has no keys or no rate,
// the timeline has no frames, and a note is added to `notes`. Throws ExportError if the motion has
// no frame in the range, if the length of the motion or of a frame is not finite, and if there
// would be more than ten million samples.
//
// If `even` is set, for formats that store only a rate, the steps between all frames become equal:
// if they differ, the frames are all from the first to the last in steps of 1, and the range is
// applied to these.
Timeline MakeTimeline(const headless::Object& model, const headless::ActionSource* motion,
                      const Options& options, bool even, Notes& notes);

// Adds the note that only the base pose of the model is written, because it has no motion.
void NoteNoMotion(const headless::Object& model, Notes& notes);

// Returns the frames per second of a timeline with equal steps. Returns 0 if it has no frames.
double FramesPerSecond(const Timeline& timeline);

}  // namespace exporters
