// Imports an AMC file into the scene, as a motion of the skeleton that was imported last.
#include <algorithm>
#include <array>
#include <new>
#include <vector>

#include "acclaim/acclaim_import.h"
#include "mocap/bar_in_use.h"
#include "mocap/scene_helpers.h"

using namespace Zelk::status;

namespace {

// Stores the channel types of the skeleton file, and restores them when the scope ends. A motion
// import adds, reorders and converts channels, but the next import needs the original types.
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
        status = OpenMotion(amcFile, motionName);
        if (status.Succeeded()) status = BuildMotion(motionName);
    } catch (const std::bad_alloc&) {
        status = FailForMemory();
    }
    Clear(false);
    return status;
}

std::int32_t CAcclaimImport::OpenMotion(const Zelk::CString& amcFile,
                                        const Zelk::CString& motionName) {
    if (!lastModel.IsValid()) return Fail(kInvalidArgument, L"Skeleton not defined yet");
    if (amcFile.IsEmpty())
        return Fail(kInvalidArgument, L"AMC file not specified. Specify a valid file name");
    if (motionName.IsEmpty())
        return Fail(kInvalidArgument, L"Motion name not specified. Specify a valid motion name");
    if (!stringFile.ReadFile(amcFile.GetWideString()))
        return RefuseFile(false, kFileNotFound,
                          L"Failed to read AMC file. Specify a valid file name");
    parsing = true;
    const std::int32_t status = parser.ParseMotionHeader();
    return status < 0 ? RefuseFile(false, status, parser.LastError().message) : status;
}

std::int32_t CAcclaimImport::ParseAMC() {
    return RecordParserError(parser, parser.ParseAMC());
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

// The end of an action is a time in seconds, but the times of keys are frame numbers. A host gets
// the seconds per frame when it divides the end by the last key's time.
Zelk::CStatus CAcclaimImport::CreateMotionZelkEntities(const Zelk::CString& motionName) {
    progressBar->SetText(L"Creating model motion action...");
    if (CheckCancelled()) return kCancelled;
    Zelk::CStatus status = AddActionSource(lastModel, motionName, lastMotion,
                                           parser.Facts().lastFrame * parser.Facts().frameTime);
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
