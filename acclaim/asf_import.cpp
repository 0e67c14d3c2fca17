// From an ASF file to the scene: a model with its base pose, its skeleton and its group.
#include <new>

#include "acclaim/acclaim_import.h"
#include "host/application.h"
#include "mocap/bar_in_use.h"
#include "mocap/scene_helpers.h"
#include "textio/ascii.h"

using namespace Zelk::status;

namespace {

// Frames that the base pose lasts.
constexpr double kBasePoseFrames = 5.0;
constexpr double kLowestVersion = 1.0;

}  // namespace

Zelk::CStatus CAcclaimImport::ImportSkeleton(const Zelk::CString& asfFile,
                                             const Zelk::CString& name) {
    RecordError(Zelk::CString());
    Clear(true);
    parsing = false;
    Zelk::CStatus status;
    try {
        status = ReadSkeleton(asfFile, name);
        if (status.Succeeded()) status = BuildSkeleton(name);
    } catch (const std::bad_alloc&) {
        // Of a parser's failure the message alone tells what it was.
        status = FailForMemory(parsing ? kFail : kOutOfMemory);
    }
    Clear(!status.Succeeded());
    return status;
}

std::int32_t CAcclaimImport::ReadSkeleton(const Zelk::CString& asfFile, const Zelk::CString& name) {
    if (asfFile.IsEmpty())
        return Fail(kInvalidArgument, L"ASF file not specified. Specify a valid file name");
    if (name.IsEmpty())
        return Fail(kInvalidArgument,
                    L"Container model name not specified. Specify a valid model name");
    if (!hasSeparators) return FailForMemory();
    if (!stringFile.ReadFile(asfFile.GetWideString()))
        return RefuseFile(true, kFileNotFound,
                          L"Failed to read ASF file. Specify a valid file name");
    ResetAllowances();
    parsing = true;
    return CheckVersion();
}

std::int32_t CAcclaimImport::RefuseFile(bool all, std::int32_t status,
                                        const Zelk::CString& message) {
    Clear(all);
    return Fail(status, message);
}

// version = ":version" number
std::int32_t CAcclaimImport::CheckVersion() {
    const char* const token = GetNextAccString();
    if (token == nullptr || !textio::EqualsIgnoringCase(token, ":version"))
        return RefuseFile(true, kIncompatibleFile,
                          L"ASF file is invalid. Specify a valid ASF file");
    double version = 0.0;
    if (!stringFile.GetNextFloat(version))
        return RefuseFile(true, kInvalidArgument,
                          L"Bad ASF file version. Specify a valid ASF file");
    if (version < kLowestVersion)
        return RefuseFile(true, kInvalidArgument,
                          L"Unsupported ASF file version. Specify a valid ASF file");
    return kOk;
}

Zelk::CStatus CAcclaimImport::BuildSkeleton(const Zelk::CString& name) {
    CIFPlugProgressBar bar;
    const BarInUse barInUse(progressBar, bar);
    bar.Reset();
    bar.SetRange(35);
    bar.SetText(L"Importing Acclaim Skeleton...");
    bar.Show();
    lastBasePose.ResetObject();
    lastMotion.ResetObject();
    lastModel.ResetObject();
    if (ParseASF() < 0) return kFail;
    parsing = false;
    return CreateSkeletonZelkEntities(name);
}

Zelk::CStatus CAcclaimImport::CreateSkeletonZelkEntities(const Zelk::CString& name) {
    progressBar->SetText(L"Creating Zelk model...");
    if (CheckCancelled()) return kCancelled;
    Zelk::Model root = Zelk::Application().GetActiveSceneRoot();
    if (!root.AddModel(Zelk::CRefArray(), name, lastModel).Succeeded())
        return Fail(kFail, L"Failed to create main model");
    modelName = lastModel.GetName();
    Zelk::CStatus status = AddActionSource(lastModel, modelName + L"_BasePose", lastBasePose,
                                           kBasePoseFrames * frameTime);
    if (!status.Succeeded()) return status;
    progressBar->Advance(5);

    status = useNulls ? CreateNullsSkeleton() : CreateBonesSkeleton();
    if (status.Succeeded() && createGroup) status = CreateGroup();
    if (status.Succeeded()) progressBar->Advance(15);
    return status;
}
