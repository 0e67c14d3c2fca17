// Imports a BVH file into the scene. Each section of the file becomes a model.
#include <algorithm>
#include <new>
#include <utility>

#include "bvh/biovision_import.h"
#include "host/application.h"
#include "mocap/bar_in_use.h"
#include "mocap/parse_status.h"
#include "mocap/scene_helpers.h"
#include "textio/ascii.h"

using namespace Zelk::status;

namespace {

// The base pose lasts this many frames.
constexpr double kBasePoseFrames = 5.0;

}  // namespace

Zelk::CStatus CBiovisionImport::ImportBVH(const Zelk::CString& fileName,
                                          const Zelk::CString& name) {
    RecordError(Zelk::CString());
    Clear(true);
    importedModels = 0;
    parsing = false;
    Zelk::CStatus status;
    try {
        status = ImportFile(fileName, name);
    } catch (const std::bad_alloc&) {
        status = FailForMemory();
    }
    Clear(true);
    return status;
}

Zelk::CStatus CBiovisionImport::ImportFile(const Zelk::CString& fileName,
                                           const Zelk::CString& name) {
    if (fileName.IsEmpty())
        return Fail(kInvalidArgument, L"BVH file not specified. Specify a valid file name");
    if (name.IsEmpty())
        return Fail(kInvalidArgument,
                    L"Container model name not specified. Specify a valid model name");
    if (!stringFile.ReadFile(fileName.GetWideString())) {
        Clear(true);
        return Fail(kFileNotFound, L"Failed to read BVH file. Specify a valid file name");
    }
    allowances.Reset(stringFile.GetSize());
    sectionsLeft.Reset(stringFile.GetSize());
    CIFPlugProgressBar bar;
    const BarInUse barInUse(progressBar, bar);
    return ImportSections(name);
}

Zelk::CStatus CBiovisionImport::ImportSections(const Zelk::CString& name) {
    Zelk::CStatus status;
    std::int32_t parsed = kOk;
    while (status.Succeeded() && parsed != mocap::kEndOfFile) {
        const char* const token = stringFile.GetNextString();
        if (token == nullptr || !textio::EqualsIgnoringCase(token, "HIERARCHY")) break;
        status = ImportSection(name, parsed);
    }
    if (status.Succeeded() && importedModels == 0) {
        Clear(true);
        return Fail(kIncompatibleFile, L"BVH file is invalid. Specify a valid BVH file");
    }
    return status;
}

Zelk::CStatus CBiovisionImport::ImportSection(const Zelk::CString& name, std::int32_t& parsed) {
    const auto basePose = lastBasePose;
    const auto motion = lastMotion;
    const auto model = lastModel;
    lastBasePose.ResetObject();
    lastMotion.ResetObject();
    lastModel.ResetObject();

    Zelk::CStatus status;
    try {
        status = BuildSection(name, parsed);
    } catch (const std::bad_alloc&) {
        // While a section is parsed, a lack of memory has the status kFail, which BuildSection
        // returns for every failure of the parser. Only the recorded message tells the reason.
        status = FailForMemory(parsing ? kFail : kOutOfMemory);
    }
    if (status.Succeeded()) {
        ++importedModels;
        Clear(false);
    } else if (importedModels > 0) {
        // The getters return the objects of the last section that was completed.
        lastBasePose = basePose;
        lastMotion = motion;
        lastModel = model;
    }
    return status;
}

Zelk::CStatus CBiovisionImport::BuildSection(const Zelk::CString& name, std::int32_t& parsed) {
    parsing = true;
    parsed = ParseBVH(nullptr);
    if (parsed < 0) return kFail;
    parsing = false;
    return BuildScene(name);
}

std::int32_t CBiovisionImport::ParseBVH(MOCAPMODEL* current) {
    const std::int32_t status = RecordParserError(parser, parser.ParseHierarchy(current));
    return status == kOk ? ParseMotion() : status;
}

std::int32_t CBiovisionImport::ParseMotion() {
    const std::int32_t status = RecordParserError(parser, parser.ParseMotion());
    frameTime = parser.FrameTime();
    return status;
}

void CBiovisionImport::ShowMotionProgress() {
    const std::uint32_t keys = channelCount * frameCount;
    const auto nodes = static_cast<std::uint32_t>(models.size());
    std::uint32_t range = std::min(keys, BvhParser::kValueSteps) + 50 + 10 * nodes + 10 * nodes;
    if (!useNulls) range += 10 * nodes;  // bones take longer to build
    progressBar->Reset();
    progressBar->SetRange(range);
    progressBar->SetText(L"Importing Motion...");
    progressBar->Show();
}

Zelk::CStatus CBiovisionImport::ImportParsed(MocapSkeleton section, double sectionFrameTime,
                                             const Zelk::CString& name) {
    RecordError(Zelk::CString());
    Clear(true);
    static_cast<MocapSkeleton&>(*this) = std::move(section);
    frameTime = sectionFrameTime;
    CIFPlugProgressBar bar;
    const BarInUse barInUse(progressBar, bar);
    return BuildScene(name);
}

Zelk::CStatus CBiovisionImport::BuildScene(const Zelk::CString& name) {
    const std::int32_t status = FixRotationsOrder();
    return status < 0 ? Zelk::CStatus(status) : CreateZelkEntities(name);
}

Zelk::CStatus CBiovisionImport::CreateZelkEntities(const Zelk::CString& name) {
    progressBar->SetText(L"Creating Zelk model...");
    const std::int32_t counted = CountSection(name);
    if (counted < 0) return counted;
    Zelk::Model root = Zelk::Application().GetActiveSceneRoot();
    if (!root.AddModel(Zelk::CRefArray(), name, lastModel).Succeeded())
        return Fail(kFail, L"Failed to create main model");
    modelName = lastModel.GetName();

    Zelk::CStatus status = CreateActions();
    if (status.Succeeded()) status = CreateSkeleton();
    if (status.Succeeded()) status = CreateMotion();
    return status;
}

// Limits what a file with many short sections can create. A section that has no channels, or that
// has no frames, may need only a few bytes of the file. Even so, it creates a model, two actions
// and, if `createGroup` is true, a group. The names of these objects contain `name`, and so do the
// commands that the host records. Each such section therefore takes 1 from the allowance of
// sections, and 12 times the length of `name` from the allowance of characters in derived names.
std::int32_t CBiovisionImport::CountSection(const Zelk::CString& name) {
    if (channelCount > 0 && frameCount > 0) return kOk;
    if (!sectionsLeft.Reserve())
        return FailForCount(L"sections without channels or frames", sectionsLeft);
    if (!allowances.derivedNames.Reserve(std::uint64_t{12} * name.Length()))
        return FailForDerivedNames();
    return kOk;
}

// The end of an action is a time in seconds, but the times of keys are frame numbers. A host gets
// the seconds per frame when it divides the end by the last key's time.
Zelk::CStatus CBiovisionImport::CreateActions() {
    const Zelk::CStatus status = AddActionSource(lastModel, modelName + L"_BasePose", lastBasePose,
                                                 kBasePoseFrames * frameTime);
    if (!status.Succeeded()) return status;
    return AddActionSource(lastModel, modelName + L"_Motion", lastMotion, frameCount * frameTime);
}

Zelk::CStatus CBiovisionImport::CreateSkeleton() {
    Zelk::CStatus status = useNulls ? CreateNullsSkeleton() : CreateBonesSkeleton();
    if (!status.Succeeded()) return status;
    if (CheckCancelled()) return kCancelled;
    progressBar->Advance(50);
    if (!useNulls) {
        status = FixBonesRotations();
        if (!status.Succeeded()) return status;
    }
    return createGroup ? CreateGroup() : Zelk::CStatus(kOk);
}

Zelk::CStatus CBiovisionImport::CreateMotion() {
    progressBar->SetText(L"Attaching FCurves...");
    ScratchCurve scratch = CreateScratchCurve();
    for (const auto& node : models) {
        const Zelk::CStatus status = AttachCurves(*node, scratch.fcurve);
        if (!status.Succeeded()) return status;
        progressBar->Advance(10);
    }
    progressBar->SetText(L"Almost done...");
    return FinishMotion(scratch);
}
