// Parses the frames of an AMC file. A frame is a number, then the name and the values of each
// animated bone. The first frame gives the order of the bones. In later frames the parser does not
// compare the names. It assigns the values in the order of the first frame.
#include <algorithm>
#include <string>
#include <utility>

#include "acclaim/acclaim_parser.h"
#include "acclaim/amc_motion.h"
#include "acclaim/wide_text.h"
#include "host/status.h"
#include "math/angles.h"

using namespace Zelk::status;

namespace {

std::uint32_t CountAnimatedChannels(const MOCAPMODEL& node) {
    std::uint32_t count = 0;
    for (const auto& channel : node.channels)
        count += IsAnimated(channel.type);
    return count;
}

}  // namespace

void AcclaimParser::Warn(const std::wstring& message) {
    if (warnings.Reserve(message.size()))
        monitor.Warn(message);
    else
        ++warningsLeftOut;
}

void AcclaimParser::WarnOfOthers() const {
    if (warningsLeftOut == 0) return;
    monitor.Warn(L"More unknown bones or invalid keywords found in AMC file (" +
                 std::to_wstring(warningsLeftOut) + L"), ignoring...");
}

std::int32_t AcclaimParser::ParseAMC() {
    warnings.Reset(stringFile.GetSize());
    warningsLeftOut = 0;
    const std::int32_t status = ParseFrames();
    WarnOfOthers();
    return status;
}

// motion = { frame }
std::int32_t AcclaimParser::ParseFrames() {
    if (skeleton.models.empty()) {
        monitor.Advance(10);
        return kOk;
    }
    Motion motion;
    for (const auto& node : skeleton.models) {
        if (CheckCancelled()) return kCancelled;
        if (IsAnimated(*node)) ++motion.animatedNodes;
    }
    monitor.Advance(10);
    if (motion.animatedNodes == 0) return kOk;

    int number = 0;
    while (ParseFrameNumber(number)) {
        NoteFrame(static_cast<std::uint32_t>(number));
        if (motion.animatedNodes > 0) motion.keys.BeginFrame(number);
        std::int32_t status = ParseFrame(motion);
        if (status >= 0 && motion.HasAllBones()) status = ParseRows(motion);
        if (status < 0) return status;
    }
    if (CheckCancelled()) return kCancelled;
    monitor.Advance(10);

    const std::int32_t status = AttachKeys(motion);
    if (status < 0) return status;
    if (CheckCancelled()) return kCancelled;
    monitor.Advance(10);
    return kOk;
}

void AcclaimParser::NoteFrame(std::uint32_t number) {
    facts.lastFrame = std::max(facts.lastFrame, number);
    ++skeleton.frameCount;
}

// Skips lines that do not begin with a number. Returns false at the end of the file.
bool AcclaimParser::ParseFrameNumber(int& number) {
    while (!stringFile.GetNextInt(number)) {
        const char* const token = GetNextAccString();
        if (token == nullptr) return false;
        Warn(L"Invalid keyword found (" + WideText(token) + L") at line " +
             std::to_wstring(stringFile.GetCurrentLine() + 1) + L", ignoring...");
        if (!SkipLine()) return false;
    }
    return true;
}

// frame = number { name { value } }
std::int32_t AcclaimParser::ParseFrame(Motion& motion) {
    std::size_t position = 0;
    for (std::int32_t record = 0; record < motion.animatedNodes; ++record) {
        const char* const name = GetNextAccString();
        if (name == nullptr) return Fail(kInvalidData, L"Expected animated node name");
        if (position == motion.slots.size()) {
            const std::int32_t status = ResolveBone(motion, name);
            if (status < 0) return status;
            // The values after an unknown name are parsed as the names of the next bones.
            if (position == motion.slots.size()) continue;
        }
        const std::int32_t status = ParseBoneValues(*motion.slots[position], motion.keys);
        if (status < 0) return status;
        ++position;
    }
    return kOk;
}

std::int32_t AcclaimParser::ResolveBone(Motion& motion, const char* name) {
    MOCAPMODEL* const bone = FindModelByName(name);
    if (bone == nullptr) {
        --motion.animatedNodes;
        Warn(L"Unknown bone (" + WideText(name) + L") referenced in AMC file at line " +
             std::to_wstring(stringFile.GetCurrentLine() + 1) + L", ignoring...");
        return kOk;
    }
    if (!motion.inSlots.insert(bone).second)
        return Fail(kInvalidData, L"Bone found more than once in a frame");
    motion.slots.push_back(bone);
    motion.keys.AddChannels(CountAnimatedChannels(*bone));
    return kOk;
}

std::int32_t AcclaimParser::ParseBoneValues(const MOCAPMODEL& bone, AmcKeyLists& keys) {
    for (const CHANNELS& channel : bone.channels) {
        if (channel.type == kEmptySlot) continue;
        if (CheckCancelled()) return kCancelled;
        double value = 0.0;
        if (!stringFile.GetNextFloat(value))
            return Fail(kInvalidData, L"Failed to get animation value");
        if (IsAnimated(channel.type)) keys.Append(ConvertValue(channel, value));
    }
    return kOk;
}

// Converts to degrees, applies the limits, and scales bone lengths.
double AcclaimParser::ConvertValue(const CHANNELS& channel, double value) const {
    if (!facts.degrees && IsRotation(channel.type)) value *= math::kDegreesPerRadian;
    if (applyLimits) {
        if (channel.hasMinLimit && value < channel.minLimit) value = channel.minLimit;
        if (channel.hasMaxLimit && channel.maxLimit < value) value = channel.maxLimit;
    }
    return channel.type == kBoneLength ? value * facts.lengthMultiplier : value;
}

// Gives the channels of all bones in `motion.slots` their keys. A bone that no frame names gets no
// keys.
std::int32_t AcclaimParser::AttachKeys(Motion& motion) {
    // This cannot happen. Each unknown name subtracts one from `animatedNodes`, and ParseFrame
    // reads a name only while `animatedNodes` is positive.
    if (motion.animatedNodes < 0)
        return Fail(kUnexpectedEnd, L"Unrecoverable errors while parsing motion file");
    if (motion.slots.empty()) return kOk;
    std::vector<KeyArray> keys = motion.keys.ReleaseKeys(std::move(motion.rows));
    auto next = keys.begin();
    for (MOCAPMODEL* bone : motion.slots) {
        for (CHANNELS& channel : bone->channels) {
            if (!IsAnimated(channel.type)) continue;
            if (keys.empty()) return FailForMemory();
            channel.keys = std::move(*next++);
            if (overrideLengthMultiplier && IsPosition(channel.type))
                for (std::uint32_t frame = 0; frame < skeleton.frameCount; ++frame)
                    channel.keys[frame].value *= facts.lengthMultiplier;
            if (CheckCancelled()) return kCancelled;
        }
    }
    return kOk;
}
