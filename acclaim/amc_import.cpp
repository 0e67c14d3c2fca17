// From an AMC file to the scene: a motion of the skeleton that stands there.
#include <algorithm>
#include <array>
#include <new>
#include <vector>

#include "acclaim/acclaim_import.h"
#include "mocap/bar_in_use.h"
#include "mocap/scene_helpers.h"
#include "textio/ascii.h"

using textio::EqualsIgnoringCase;
using namespace Zelk::status;

namespace {

// The channels as the skeleton file has them. A motion completes, reorders and converts them for
// itself; the next one is read by the file's again.
class ChannelTypes {
  public:
    explicit ChannelTypes(const std::vector<std::unique_ptr<MOCAPMODEL>>& models)
        : models_(models), types_(models.size()) {
        for (std::size_t node = 0; node < types_.size(); ++node)
            std::transform(models_[node]->channels.begin(), models_[node]->channels.end(),
                           types_[node].begin(), [](const auto& slot) { return slot.type; });
    }
    ~ChannelTypes() {
        for (std::size_t node = 0; node < types_.size(); ++node) {
            auto type = types_[node].begin();
            for (auto& slot : models_[node]->channels)
                slot.type = *type++;
        }
    }
    ChannelTypes(const ChannelTypes&) = delete;
    ChannelTypes& operator=(const ChannelTypes&) = delete;

  private:
    const std::vector<std::unique_ptr<MOCAPMODEL>>& models_;
    std::vector<std::array<std::uint8_t, MOCAPMODEL::kSlotCount>> types_;
};

}  // namespace

Zelk::CStatus CAcclaimImport::ImportMotion(const Zelk::CString& amcFile,
                                           const Zelk::CString& motionName) {
    RecordError(Zelk::CString());
    Clear(false);
    parsing = false;
    Zelk::CStatus status;
    try {
        status = ReadMotion(amcFile, motionName);
        if (status.Succeeded()) status = BuildMotion(motionName);
    } catch (const std::bad_alloc&) {
        status = FailForMemory();
    }
    Clear(false);
    return status;
}

std::int32_t CAcclaimImport::ReadMotion(const Zelk::CString& amcFile,
                                        const Zelk::CString& motionName) {
    if (!lastModel.IsValid()) return Fail(kInvalidArgument, L"Skeleton not defined yet");
    if (amcFile.IsEmpty())
        return Fail(kInvalidArgument, L"AMC file not specified. Specify a valid file name");
    if (motionName.IsEmpty())
        return Fail(kInvalidArgument, L"Motion name not specified. Specify a valid motion name");
    if (!stringFile.ReadFile(amcFile.GetWideString()))
        return RefuseFile(false, kFileNotFound,
                          L"Failed to read AMC file. Specify a valid file name");
    warnings.Reset(stringFile.GetSize());
    warningsLeftOut = 0;
    parsing = true;
    return ReadMotionHeader();
}

// header = [ ":SAMPLES-PER-SECOND" n ] ":fully-specified" [ unit ]
std::int32_t CAcclaimImport::ReadMotionHeader() {
    const char* token = GetNextAccString();
    if (token != nullptr && EqualsIgnoringCase(token, ":SAMPLES-PER-SECOND")) {
        int samples = 0;
        if (stringFile.GetNextInt(samples) && samples > 1) frameTime = 1.0 / samples;
        token = GetNextAccString();
    }
    if (token == nullptr || !EqualsIgnoringCase(token, ":fully-specified"))
        return RefuseFile(
            false, kIncompatibleFile,
            L"AMC file is invalid. Only ':fully-specified' motion files are supported");
    return ReadAngleUnit();
}

// unit = ":degrees" | ":radians". Without one the values are taken in the skeleton's.
std::int32_t CAcclaimImport::ReadAngleUnit() {
    const std::uint32_t position = stringFile.GetPosition();
    const char* const token = GetNextAccString();
    if (token == nullptr) return RefuseFile(false, kUnexpectedEnd, L"Unexpected end of file");
    if (token[0] != ':') {
        stringFile.SetPosition(position);
        return kOk;
    }
    const bool inDegrees = EqualsIgnoringCase(token, ":degrees");
    if (!inDegrees && !EqualsIgnoringCase(token, ":radians"))
        return RefuseFile(false, kInvalidData, L"Unknown keyword");
    if (inDegrees != degrees)
        return RefuseFile(false, kIncompatibleFile,
                          L"Incompatible AMC file. File must use same angle units as the ASF file");
    return kOk;
}

Zelk::CStatus CAcclaimImport::BuildMotion(const Zelk::CString& motionName) {
    CIFPlugProgressBar bar;
    const BarInUse barInUse(progressBar, bar);
    bar.Reset();
    bar.SetRange(90);
    bar.SetText(L"Importing Acclaim Motion...");
    bar.Show();
    const ChannelTypes keptTypes(models);

    std::int32_t status = ParseAMC();
    LogWarningsLeftOut();
    if (status < 0) return status;
    parsing = false;
    status = FixRotationsOrder();
    if (status < 0) return status;
    bar.Advance(10);
    status = GlobalizeRotations();
    if (status < 0) return status;
    bar.Advance(10);
    status = useNulls ? FixLength() : FixBonesRotations();
    if (status < 0) return status;
    bar.Advance(10);
    return CreateMotionZelkEntities(motionName);
}

// The end is in seconds although keys are timed in frame numbers: hosts read both together.
Zelk::CStatus CAcclaimImport::CreateMotionZelkEntities(const Zelk::CString& motionName) {
    progressBar->SetText(L"Creating model motion action...");
    if (CheckCancelled()) return kCancelled;
    Zelk::CStatus status =
        AddActionSource(lastModel, motionName, lastMotion, lastFrame * frameTime);
    if (!status.Succeeded()) return status;
    if (CheckCancelled()) return kCancelled;
    progressBar->Advance(10);

    ScratchCurve scratch = CreateScratchCurve();
    for (const auto& node : models) {
        if (CheckCancelled()) return kCancelled;
        status = AttachCurves(*node, scratch.fcurve);
        if (!status.Succeeded()) return status;
    }
    progressBar->SetText(L"Almost done...");
    progressBar->Advance(10);
    if (CheckCancelled()) return kCancelled;
    status = FinishMotion(scratch);
    progressBar->Advance(10);
    return status;
}
