#include "export/timeline.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <limits>

#include "export/finite_check.h"
#include "export/readable_name.h"
#include "headless/evaluation.h"
#include "headless/key_times.h"

namespace exporters {
namespace {

// This many frames last more than a day at a hundred frames per second. A motion that would have
// more must contain a wrong frame number.
constexpr double kMostFrames = 10'000'000.0;

// Returns `count` frame numbers that begin with `first` and rise by `step`. `count` is a whole
// number. Throws ExportError if it is above kMostFrames.
std::vector<double> EvenFrames(double first, double step, double count) {
    if (!(count <= kMostFrames))
        throw ExportError(
            fmt::format("the motion would take more than {:.0f} frames", kMostFrames));
    std::vector<double> frames(static_cast<std::size_t>(count));
    for (std::size_t index = 0; index < frames.size(); ++index)
        frames[index] = first + static_cast<double>(index) * step;
    return frames;
}

// Returns the range in words. A range that is open at an end has the least or the largest number
// there.
std::string RangeText(const FrameRange& range) {
    using Limits = std::numeric_limits<std::int64_t>;
    if (range.last == Limits::max()) return fmt::format("from {} on", range.first);
    if (range.first == Limits::min()) return fmt::format("up to {}", range.last);
    return fmt::format("from {} to {}", range.first, range.last);
}

// If the steps between the frames differ, replaces them by all frames from the first to the last in
// steps of 1. Throws ExportError if these would be more than kMostFrames.
void MakeEven(std::vector<double>& frames) {
    if (frames.size() < 3) return;
    const double step = (frames.back() - frames.front()) / static_cast<double>(frames.size() - 1);
    for (std::size_t index = 1; index < frames.size(); ++index) {
        const double expected = frames.front() + static_cast<double>(index) * step;
        if (std::abs(frames[index] - expected) <= 1e-6 * step) continue;
        frames = EvenFrames(frames.front(), 1.0, std::floor(frames.back() - frames.front()) + 1.0);
        return;
    }
}

// Throws ExportError if the rate is so low that `step`, the time from one frame to the next, is
// infinite.
void RequireFiniteStep(double framesPerSecond, double step) {
    if (!IsFinite(step))
        throw ExportError(fmt::format("{} frames per second are too few", framesPerSecond));
}

[[noreturn]] void RefuseRange(const std::vector<double>& frames, const FrameRange& range,
                              const std::string& name) {
    throw ExportError(fmt::format("{}: the motion has no frame {}; its frames are {} to {}", name,
                                  RangeText(range), frames.front(), frames.back()));
}

// Removes the frames outside the range. Throws ExportError if no frame is left.
void KeepRange(std::vector<double>& frames, const FrameRange& range, const std::string& name) {
    const auto first =
        std::lower_bound(frames.begin(), frames.end(), static_cast<double>(range.first));
    const auto end =
        std::upper_bound(frames.begin(), frames.end(), static_cast<double>(range.last));
    if (first >= end) RefuseRange(frames, range, name);
    frames.erase(end, frames.end());
    frames.erase(frames.begin(), first);
}

// Replaces the frames by samples from the first frame to the last one, or from the beginning of the
// range to its end. Throws ExportError if the motion has no part in the range, and if there would
// be too many samples.
void ChooseSamples(Timeline& timeline, const Options& options, const std::string& name) {
    double first = timeline.frames.front();
    double last = timeline.frames.back();
    if (options.frames) {
        first = std::max(first, static_cast<double>(options.frames->first));
        last = std::min(last, static_cast<double>(options.frames->last));
        if (first > last) RefuseRange(timeline.frames, *options.frames, name);
    }
    const double step = 1.0 / (*options.resampleTo * timeline.secondsPerFrame);
    RequireFiniteStep(*options.resampleTo, step);
    // Because of rounding, the last sample may be slightly after the end of the motion. With the
    // two small numbers, it is counted even then.
    const double count = std::floor((last - first) / step * (1.0 + 1e-12) + 1e-9) + 1.0;
    timeline.sampleRate = options.resampleTo;
    timeline.frames = EvenFrames(first, step, count);
}

// Returns the seconds per frame. If the options set a rate, it is used instead of the motion's own
// rate. If neither has a rate, the result is zero or below.
double SecondsPerFrameOf(const std::string& name, const headless::ActionSource& motion,
                         const Options& options) {
    if (options.framesPerSecond) {
        const double seconds = 1.0 / *options.framesPerSecond;
        RequireFiniteStep(*options.framesPerSecond, seconds);
        return seconds;
    }
    if (!IsFinite(motion.animEnd))
        throw ExportError(fmt::format("{}: the length of the motion is not a finite time", name));
    return headless::SecondsPerFrame(motion);
}

}  // namespace

std::int64_t Timeline::Number(std::size_t index) const {
    if (!sampleRate) return std::llround(frames[index]);
    return std::llround(frames.front()) + static_cast<std::int64_t>(index);
}

void NoteNoMotion(const headless::Object& model, Notes& notes) {
    notes.push_back(ReadableName(model.name) + ": no motion, only the base pose is written");
}

Timeline MakeTimeline(const headless::Object& model, const headless::ActionSource* motion,
                      const Options& options, bool even, Notes& notes) {
    const std::string name = ReadableName(model.name);
    Timeline timeline;
    if (motion) timeline.frames = headless::KeyTimes(*motion);
    if (motion == nullptr || timeline.frames.empty()) {
        NoteNoMotion(model, notes);
        return timeline;
    }
    timeline.secondsPerFrame = SecondsPerFrameOf(name, *motion, options);
    if (!(timeline.secondsPerFrame > 0.0)) {
        notes.push_back(name +
                        ": the motion has no frame time, only the base pose is written"
                        " (--fps N gives it one)");
        return {};
    }
    if (options.resampleTo) {
        ChooseSamples(timeline, options, name);
        return timeline;
    }
    if (even) MakeEven(timeline.frames);
    if (options.frames) KeepRange(timeline.frames, *options.frames, name);
    return timeline;
}

double FramesPerSecond(const Timeline& timeline) {
    if (timeline.IsPose()) return 0.0;
    if (timeline.sampleRate) return *timeline.sampleRate;
    const std::vector<double>& frames = timeline.frames;
    if (frames.size() < 2) return 1.0 / timeline.secondsPerFrame;
    const double step = (frames.back() - frames.front()) / static_cast<double>(frames.size() - 1);
    return 1.0 / (step * timeline.secondsPerFrame);
}

}  // namespace exporters
