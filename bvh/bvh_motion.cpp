// Parses the MOTION of a section: a header, then one value for each channel and frame.
#include <vector>

#include "bvh/bvh_parser.h"
#include "host/status.h"

using namespace Zelk::status;

// motion = header { value }
std::int32_t BvhParser::ParseMotion() {
    const std::int32_t status = ParseFrameHeader();
    if (status < 0) return status;
    if (skeleton.channelCount == 0) {
        if (skeleton.frameCount == 0) return kOk;
        return Fail(kNoData, L"Missing FCurves for animation CHANNELS");
    }
    monitor.BeginValues();
    // If the frame count is too large for the file, no memory for keys is allocated. The values are
    // then parsed but not stored, and parsing fails after the last value of the file.
    if (!CanHoldFrames()) return ParseFrames(nullptr);

    std::vector<KeyArray> keys = AllocateKeyArrays(skeleton.channelCount, skeleton.frameCount);
    if (keys.empty()) return FailForMemory();
    const std::int32_t read = ParseFrames(keys.data());
    if (read < 0) return read;
    auto next = keys.begin();
    for (KeyArray* slot : keySlots)
        *slot = std::move(*next++);
    return kOk;
}

// header = "Frames:" count "Frame" "Time:" seconds
std::int32_t BvhParser::ParseFrameHeader() {
    if (!ConsumeKeyword("Frames:")) return Fail(kInvalidData, L"Expected a 'Frames:' token");
    int frames = 0;
    if (!stringFile.GetNextInt(frames))
        return Fail(kInvalidData, L"Expected an integer value for Frames count");
    skeleton.frameCount = static_cast<std::uint32_t>(frames);
    if (!ConsumeKeyword("Frame") || !ConsumeKeyword("Time:"))
        return Fail(kInvalidData, L"Expected a 'Frame Time:' token");
    if (!stringFile.GetNextFloat(frameTime))
        return Fail(kInvalidData, L"Expected a float value for Frame Time");
    return kOk;
}

// Each value takes at least two bytes: one character and one separator. The last value needs no
// separator.
bool BvhParser::CanHoldFrames() const {
    const std::uint64_t values = std::uint64_t{skeleton.channelCount} * skeleton.frameCount;
    const std::uint64_t bytes = stringFile.GetSize() - stringFile.GetPosition();
    return values <= (bytes + 1) / 2;
}

// The file has the values frame by frame, in the order of the channels. If `keys` is null, the
// values are checked but not stored.
std::int32_t BvhParser::ParseFrames(KeyArray* keys) {
    const std::uint32_t total = skeleton.channelCount * skeleton.frameCount;
    const std::uint32_t step = total > 99 ? total / kValueSteps : 1;
    std::uint32_t untilPoll = step;
    for (std::uint32_t frame = 0; frame < skeleton.frameCount; ++frame) {
        const double time = static_cast<double>(frame) + 1.0;
        for (std::uint32_t channel = 0; channel < skeleton.channelCount; ++channel) {
            double value = 0.0;
            if (!stringFile.GetNextFloat(value))
                return Fail(kInvalidData, L"Expected a float value in key frame data");
            if (keys != nullptr) keys[channel].get()[frame] = {time, value};
            if (--untilPoll > 0) continue;
            untilPoll = step;
            if (CheckCancelled()) return kCancelled;
            monitor.Advance(1);
        }
    }
    return kOk;
}
