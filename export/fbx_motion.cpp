#include "export/fbx_motion.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <span>
#include <utility>

#include "export/run_parts.h"
#include "export/single.h"
#include "headless/text.h"
#include "headless/transform.h"
#include "text/wide_text.h"

namespace exporters {
namespace {

// Changes that are smaller are rounding errors. The first is a share of the figure's size, the
// second is in degrees.
constexpr double kStillPosition = 1e-8;
constexpr double kStillAngle = 1e-7;
constexpr double kStillAxis = 1e-9;  // the same for a number of a rotation matrix
// A program that finds the pose between two keys by their angles would turn a joint around if its
// angles jumped, so they do not jump: a joint that turns on and on has angles of up to eleven
// turns. A 32-bit float holds these to within a 4000th of a degree.
constexpr AngleChoice kAngles = {.keepsSceneAngles = false, .farthest = 4096.0};
// The share of the time after which the channels are known.
constexpr double kReadShare = 0.6;

std::vector<std::int64_t> TimesOf(const Timeline& timeline) {
    std::vector<std::int64_t> times(timeline.frames.size());
    for (std::size_t frame = 0; frame < times.size(); ++frame) {
        const double time = timeline.Seconds(frame) * kFbxSecond;
        if (!(time < static_cast<double>(std::numeric_limits<std::int64_t>::max())))
            throw ExportError("the motion is too long for FBX, whose time ends after six years");
        times[frame] = std::llround(time);
        // If rounding made two times equal, the second becomes the next larger one.
        if (frame > 0) times[frame] = std::max(times[frame], times[frame - 1] + 1);
    }
    return times;
}

// Some programs compute other keys, and lose this one, if an angle changes by 180 degrees or more
// from one key to the next. A half turn becomes the greatest change below it.
constexpr double kHalfTurn = 180.001;  // with what rounding adds
void AvoidHalfTurns(std::span<float> angles) {
    for (std::size_t key = 1; key < angles.size(); ++key) {
        const auto change = [&] { return std::abs(double{angles[key]} - angles[key - 1]); };
        while (change() >= 180.0 && change() < kHalfTurn)
            angles[key] = std::nextafter(angles[key], angles[key - 1]);
    }
}

// Whether the joint has the rotation of the base pose in all frames, although its angles may be
// others that give the same one.
bool KeepsRotation(const JointChannels& channels, const std::vector<double>& rest,
                   std::size_t joint) {
    std::array<double, JointChannels::kCount> inMotion{};
    std::array<double, JointChannels::kCount> atRest{};
    for (std::size_t channel = 3; channel < JointChannels::kCount; ++channel) {
        const auto [first, least, most] = channels.RangeOf(joint, channel);
        if (most - least > kStillAngle) return false;
        inMotion[channel] = first;
        atRest[channel] = rest[JointChannels::kCount * joint + channel];
    }
    const headless::Transform a = headless::FromLocal(inMotion);
    const headless::Transform b = headless::FromLocal(atRest);
    return std::equal(&a.axes[0][0], &a.axes[0][0] + 9, &b.axes[0][0],
                      [](double x, double y) { return std::abs(x - y) <= kStillAxis; });
}

template <class Number>
std::string_view BytesOf(std::span<const Number> numbers) {
    return {reinterpret_cast<const char*>(numbers.data()), numbers.size_bytes()};
}

}  // namespace

FbxArray FbxTimes::ArrayOf(const std::vector<std::int64_t>& times) {
    auto entry = std::find_if(entries_.begin(), entries_.end(),
                              [&](const Entry& known) { return known.times == times; });
    if (entry == entries_.end()) {
        entry = entries_.insert(entries_.end(), {times, {}});
        const std::span<const std::int64_t> numbers(entry->times);
        entry->deflated = DeflateNumbers(BytesOf(numbers));
        if (entry->deflated.size() >= numbers.size_bytes()) entry->deflated.clear();
    }
    if (entry->deflated.empty()) return PlainArray(std::span<const std::int64_t>(entry->times));
    return DeflatedArray<std::int64_t>(times.size(), entry->deflated);
}

FbxMotion::FbxMotion(const headless::Scene& scene, const headless::Object& model,
                     const ExportedMotion& motion, const std::vector<double>& rest, bool compress,
                     FbxTimes& times, const Progress& progress)
    : name_(text::EncodeUtf8(headless::View(motion.Motion()->name))) {
    const Timeline& timeline = motion.Times();
    const std::size_t frames = timeline.frames.size();
    framesPerSecond_ = timeline.sampleRate.value_or(1.0 / timeline.secondsPerFrame);
    const std::vector<std::int64_t> keyTimes = TimesOf(timeline);
    stop_ = keyTimes.back();
    // The channels are not needed any more when the values are compressed.
    {
        const JointChannels channels(scene, model, motion, timeline.frames, false, kAngles,
                                     progress.Between(0.0, kReadShare));
        ChooseCurves(channels, rest, kStillPosition * motion.Size(timeline), times, keyTimes);
        ReadValues(channels, frames, progress.Between(kReadShare, 1.0));
    }

    if (compress) Compress();
}

void FbxMotion::ChooseCurves(const JointChannels& channels, const std::vector<double>& rest,
                             double stillPosition, FbxTimes& times,
                             const std::vector<std::int64_t>& keyTimes) {
    const FbxArray allTimes = times.ArrayOf(keyTimes);
    // One reader ignores a joint whose curves have one key each.
    const FbxArray ends = times.ArrayOf(
        keyTimes.size() == 1 ? keyTimes : std::vector{keyTimes.front(), keyTimes.back()});
    for (std::size_t index = 0; index < rest.size(); ++index) {
        const std::size_t joint = index / JointChannels::kCount;
        const std::size_t channel = index % JointChannels::kCount;
        const auto [first, least, most] = channels.RangeOf(joint, channel);
        RequireSingle(least);
        RequireSingle(most);
        const bool isAngle = channel >= 3;
        const bool hasAllKeys = joint == 0 && isAngle;
        const double still = isAngle ? kStillAngle : stillPosition;
        const bool isStill = most - least <= still && !hasAllKeys;
        const bool isAtRest = std::abs(first - rest[index]) <= still ||
                              (isAngle && KeepsRotation(channels, rest, joint));
        if (isStill && isAtRest) continue;
        curves_.push_back({joint, channel, rest[index], isStill ? ends : allTimes, {}});
    }
}

void FbxMotion::ReadValues(const JointChannels& channels, std::size_t frames,
                           const Progress& progress) {
    values_ = LargeArray<float>(curves_.size() * frames);
    const std::size_t parts = PartsFor(curves_.size() * frames);
    RunParts(parts, [&](std::size_t part) {
        // As the threads run at the same time, only one of them reports progress.
        const Progress own = part == 0 ? progress : Progress();
        std::vector<double> values(frames);
        const std::size_t first = part * curves_.size() / parts;
        const std::size_t end = (part + 1) * curves_.size() / parts;
        for (std::size_t index = first; index < end; ++index) {
            own.Report(index - first, end - first);
            FbxCurve& curve = curves_[index];
            channels.Read(curve.joint, curve.channel, values);
            float* const floats = &values_[index * frames];
            std::transform(values.begin(), values.end(), floats,
                           [](double value) { return static_cast<float>(value); });
            if (curve.channel >= 3) AvoidHalfTurns({floats, frames});
            curve.values = PlainArray(std::span<const float>(floats, curve.times.count));
        }
    });
}

// Pieces of some curves decide how all are compressed.
Deflation FbxMotion::ChooseDeflation() const {
    constexpr std::size_t kPieces = 8;
    constexpr std::size_t kPiece = 1024;
    std::string pieces;
    for (std::size_t piece = 0; piece < kPieces && !curves_.empty(); ++piece) {
        const std::string_view bytes = curves_[piece * curves_.size() / kPieces].values.bytes;
        pieces += bytes.substr(bytes.size() / 2, kPiece);
    }
    return BetterDeflation(pieces);
}

void FbxMotion::Compress() {
    deflated_.resize(curves_.size());
    const Deflation deflation = ChooseDeflation();
    const std::size_t parts = PartsFor(values_.size());
    RunParts(parts, [&](std::size_t part) {
        NumberDeflater deflater(deflation);
        const std::size_t end = (part + 1) * curves_.size() / parts;
        for (std::size_t index = part * curves_.size() / parts; index < end; ++index) {
            FbxArray& values = curves_[index].values;
            std::string deflated = deflater.Deflate(values.bytes);
            if (deflated.size() >= values.bytes.size()) continue;
            deflated_[index] = std::move(deflated);
            values = DeflatedArray<float>(values.count, deflated_[index]);
        }
    });
}

}  // namespace exporters
