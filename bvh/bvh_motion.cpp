// The MOTION section: a header, then one value for each channel and frame.
#include <algorithm>

#include "bvh/biovision_import.h"

using namespace Zelk::status;

namespace {

// Of the whole range, reading the values takes at most so many steps.
constexpr std::uint32_t kReadingSteps = 50;

}  // namespace

// motion = header { value }
std::int32_t CBiovisionImport::ParseMotion() {
    const std::int32_t status = ParseFrameHeader();
    if (status < 0) return status;
    if (channelCount == 0) {
        if (frameCount == 0) return kOk;
        return Fail(kNoData, L"Missing FCurves for animation CHANNELS");
    }
    ShowMotionProgress();
    // A count that promises more than the file can hold costs no memory: its values are read, up to
    // the one that is missing, without being kept.
    if (!CanHoldFrames()) return ReadFrames(nullptr);

    std::vector<KeyArray> keys = AllocateKeyArrays(channelCount, frameCount);
    if (keys.empty()) return FailForMemory();
    const std::int32_t read = ReadFrames(keys.data());
    if (read < 0) return read;
    auto next = keys.begin();
    for (KeyArray* slot : keySlots)
        *slot = std::move(*next++);
    return kOk;
}

// header = "Frames:" count "Frame" "Time:" seconds
std::int32_t CBiovisionImport::ParseFrameHeader() {
    if (!TakeKeyword("Frames:")) return Fail(kInvalidData, L"Expected a 'Frames:' token");
    int frames = 0;
    if (!stringFile.GetNextInt(frames))
        return Fail(kInvalidData, L"Expected an integer value for Frames count");
    frameCount = static_cast<std::uint32_t>(frames);
    if (!TakeKeyword("Frame") || !TakeKeyword("Time:"))
        return Fail(kInvalidData, L"Expected a 'Frame Time:' token");
    if (!stringFile.GetNextFloat(frameTime))
        return Fail(kInvalidData, L"Expected a float value for Frame Time");
    return kOk;
}

void CBiovisionImport::ShowMotionProgress() {
    const std::uint32_t keys = channelCount * frameCount;
    const auto nodes = static_cast<std::uint32_t>(models.size());
    std::uint32_t range = std::min(keys, kReadingSteps) + 50 + 10 * nodes + 10 * nodes;
    if (!useNulls) range += 10 * nodes;  // bones take longer to build
    progressBar->Reset();
    progressBar->SetRange(range);
    progressBar->SetText(L"Importing Motion...");
    progressBar->Show();
}

// A value takes a character and a separator at least.
bool CBiovisionImport::CanHoldFrames() const {
    const std::uint64_t values = std::uint64_t{channelCount} * frameCount;
    const std::uint64_t bytes = stringFile.GetSize() - stringFile.GetPosition();
    return values <= (bytes + 1) / 2;
}

// Frame by frame, in the order of the channels. `keys` may be null.
std::int32_t CBiovisionImport::ReadFrames(KeyArray* keys) {
    const std::uint32_t total = channelCount * frameCount;
    const std::uint32_t step = total > 99 ? total / kReadingSteps : 1;
    std::uint32_t untilPoll = step;
    for (std::uint32_t frame = 0; frame < frameCount; ++frame) {
        const double time = static_cast<double>(frame) + 1.0;
        for (std::uint32_t channel = 0; channel < channelCount; ++channel) {
            double value = 0.0;
            if (!stringFile.GetNextFloat(value))
                return Fail(kInvalidData, L"Expected a float value in key frame data");
            if (keys != nullptr) keys[channel].get()[frame] = {time, value};
            if (--untilPoll > 0) continue;
            untilPoll = step;
            if (CheckCancelled()) return kCancelled;
            progressBar->Advance(1);
        }
    }
    return kOk;
}
