// The frames of an AMC file: a number, then for each animated bone its name and its values. The
// first frame tells which bone stands where; the others are read by position.
#include <string>
#include <unordered_set>

#include "acclaim/acclaim_import.h"
#include "acclaim/wide_text.h"
#include "host/application.h"
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

struct CAcclaimImport::Motion {
    std::int32_t animatedNodes = 0;  // less one for every unknown bone that was met
    // By position in a frame. Filled from the first and never emptied; there are never more of them
    // than animated nodes, so that every frame visits all of them.
    std::vector<MOCAPMODEL*> slots;
    std::unordered_set<const MOCAPMODEL*> placed;  // the nodes in `slots`
    AmcKeyLists keys;                              // by position, then by the node's slots
};

void CAcclaimImport::LogWarning(const std::wstring& message) {
    if (warnings.Take(message.size()))
        Zelk::Application().LogMessage(Zelk::CString(message.c_str()), Zelk::zkWarningSeverity);
    else
        ++warningsLeftOut;
}

void CAcclaimImport::LogWarningsLeftOut() const {
    if (warningsLeftOut == 0) return;
    const std::wstring message = L"More unknown bones or invalid keywords found in AMC file (" +
                                 std::to_wstring(warningsLeftOut) + L"), ignoring...";
    Zelk::Application().LogMessage(Zelk::CString(message.c_str()), Zelk::zkWarningSeverity);
}

// motion = { frame }
std::int32_t CAcclaimImport::ParseAMC() {
    if (models.empty()) {
        progressBar->Advance(10);
        return kOk;
    }
    Motion motion;
    for (const auto& node : models) {
        if (CheckCancelled()) return kCancelled;
        if (IsAnimated(*node)) ++motion.animatedNodes;
    }
    progressBar->Advance(10);
    if (motion.animatedNodes == 0) return kOk;

    int number = 0;
    while (ReadFrameNumber(number)) {
        if (static_cast<std::uint32_t>(number) > lastFrame)
            lastFrame = static_cast<std::uint32_t>(number);
        ++frameCount;
        if (motion.animatedNodes > 0) motion.keys.BeginFrame(number);
        const std::int32_t status = ReadFrame(motion);
        if (status < 0) return status;
    }
    if (CheckCancelled()) return kCancelled;
    progressBar->Advance(10);

    const std::int32_t status = AttachKeys(motion);
    if (status < 0) return status;
    if (CheckCancelled()) return kCancelled;
    progressBar->Advance(10);
    return kOk;
}

// Passes over lines that do not begin with a number. False at the end of the file.
bool CAcclaimImport::ReadFrameNumber(int& number) {
    while (!stringFile.GetNextInt(number)) {
        const char* const token = GetNextAccString();
        if (token == nullptr) return false;
        LogWarning(L"Invalid keyword found (" + WideText(token) + L") at line " +
                   std::to_wstring(stringFile.GetCurrentLine() + 1) + L", ignoring...");
        if (!SkipLine()) return false;
    }
    return true;
}

// frame = number { name { value } }
std::int32_t CAcclaimImport::ReadFrame(Motion& motion) {
    std::size_t position = 0;
    for (std::int32_t record = 0; record < motion.animatedNodes; ++record) {
        const char* const name = GetNextAccString();
        if (name == nullptr) return Fail(kInvalidData, L"Expected animated node name");
        if (position == motion.slots.size()) {
            const std::int32_t status = ResolveBone(motion, name);
            if (status < 0) return status;
            // The values behind an unknown name are met as the names of the next records.
            if (position == motion.slots.size()) continue;
        }
        const std::int32_t status = ReadBoneValues(*motion.slots[position], motion.keys);
        if (status < 0) return status;
        ++position;
    }
    return kOk;
}

std::int32_t CAcclaimImport::ResolveBone(Motion& motion, const char* name) {
    MOCAPMODEL* const bone = FindModelByName(name);
    if (bone == nullptr) {
        --motion.animatedNodes;
        LogWarning(L"Unknown bone (" + WideText(name) + L") referenced in AMC file at line " +
                   std::to_wstring(stringFile.GetCurrentLine() + 1) + L", ignoring...");
        return kOk;
    }
    if (!motion.placed.insert(bone).second)
        return Fail(kInvalidData, L"Bone found more than once in a frame");
    motion.slots.push_back(bone);
    motion.keys.AddChannels(CountAnimatedChannels(*bone));
    return kOk;
}

std::int32_t CAcclaimImport::ReadBoneValues(const MOCAPMODEL& bone, AmcKeyLists& keys) {
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

// From the file's units and range to the model's.
double CAcclaimImport::ConvertValue(const CHANNELS& channel, double value) const {
    if (!degrees && IsRotation(channel.type)) value *= math::kDegreesPerRadian;
    if (applyLimits) {
        if (channel.hasMinLimit && value < channel.minLimit) value = channel.minLimit;
        if (channel.hasMaxLimit && channel.maxLimit < value) value = channel.maxLimit;
    }
    return channel.type == kBoneLength ? value * lengthMultiplier : value;
}

// Hands every channel its keys. A bone that no frame names gets none.
std::int32_t CAcclaimImport::AttachKeys(Motion& motion) {
    // A frame stops at the last animated node, so that unknown bones use up the count exactly.
    if (motion.animatedNodes < 0)
        return Fail(kUnexpectedEnd, L"Unrecoverable errors while parsing motion file");
    if (motion.slots.empty()) return kOk;
    std::vector<KeyArray> keys = motion.keys.TakeKeys();
    auto next = keys.begin();
    for (MOCAPMODEL* bone : motion.slots) {
        for (CHANNELS& channel : bone->channels) {
            if (!IsAnimated(channel.type)) continue;
            if (keys.empty()) return FailForMemory();
            channel.keys = std::move(*next++);
            if (overrideLengthMultiplier && IsPosition(channel.type))
                for (std::uint32_t frame = 0; frame < frameCount; ++frame)
                    channel.keys.get()[frame].value *= lengthMultiplier;
            if (CheckCancelled()) return kCancelled;
        }
    }
    return kOk;
}
