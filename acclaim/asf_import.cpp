// Imports an ASF file into the scene: creates a model with its base pose, its skeleton and its
// group.
#include <new>

#include "acclaim/acclaim_import.h"
#include "host/application.h"
#include "mocap/bar_in_use.h"
#include "mocap/scene_helpers.h"

using namespace Zelk::status;

namespace {

// The base pose lasts this many frames.
constexpr double kBasePoseFrames = 5.0;

}  // namespace

Zelk::CStatus CAcclaimImport::ImportSkeleton(const Zelk::CString& asfFile,
                                             const Zelk::CString& name) {
    RecordError(Zelk::CString());
    Clear(true);
    parsing = false;
    Zelk::CStatus status;
    try {
        status = OpenSkeleton(asfFile, name);
        if (status.Succeeded()) status = BuildSkeleton(name);
    } catch (const std::bad_alloc&) {
        // If memory runs out while the file is parsed, the status is kFail, because BuildSkeleton
        // returns kFail for every failure of ParseASF. The recorded message tells the reason.
        status = FailForMemory(parsing ? kFail : kOutOfMemory);
    }
    Clear(!status.Succeeded());
    return status;
}

std::int32_t CAcclaimImport::OpenSkeleton(const Zelk::CString& asfFile, const Zelk::CString& name) {
    if (asfFile.IsEmpty())
        return Fail(kInvalidArgument, L"ASF file not specified. Specify a valid file name");
    if (name.IsEmpty())
        return Fail(kInvalidArgument,
                    L"Container model name not specified. Specify a valid model name");
    if (!parser.HasSeparators()) return FailForMemory();
    if (!stringFile.ReadFile(asfFile.GetWideString()))
        return RefuseFile(true, kFileNotFound,
                          L"Failed to read ASF file. Specify a valid file name");
    allowances.Reset(stringFile.GetSize());
    parsing = true;
    const std::int32_t status = parser.ParseVersion();
    return status < 0 ? RefuseFile(true, status, parser.LastError().message) : status;
}

std::int32_t CAcclaimImport::ParseASF() {
    const std::int32_t status = RecordParserError(parser, parser.ParseASF());
    if (status < 0) return status;
    const std::string& name = parser.Facts().name;
    if (!name.empty()) modelName = ZelkStringFromANSI(name.c_str());
    documentation = Zelk::CString(parser.Facts().documentation.c_str());
    return status;
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
                                           kBasePoseFrames * parser.Facts().frameTime);
    if (!status.Succeeded()) return status;
    progressBar->Advance(5);

    status = useNulls ? CreateNullsSkeleton() : CreateBonesSkeleton();
    if (status.Succeeded() && createGroup) status = CreateGroup();
    if (status.Succeeded()) progressBar->Advance(15);
    return status;
}
