#include <cwchar>
#include <iterator>

#include "bvh/biovision_import.h"
#include "mocap/scene_helpers.h"
#include "plugin/import_commands.h"
#include "plugin/outcome.h"
#include "plugin/user_input.h"

namespace {

void LogImportedModels(std::uint32_t count) {
    wchar_t text[500] = {};
    std::swprintf(text, std::size(text), L"Imported %u model%lssuccessfully", count,
                  count == 1 ? L" " : L"s ");
    LogResult(text);
}

}  // namespace

Zelk::CStatus ImportBiovision(Zelk::CRef& model, Zelk::CRef& basePose, Zelk::CRef& motion) {
    if (g_UserInput.strBVHFile.IsEmpty()) {
        LogMissingFileName();
        return plugin::kNoFileName;
    }
    LogStatus(L"Importing Biovision BVH File...");

    CBiovisionImport importer;
    importer.SetOptions(g_UserInput.bUseNulls, g_UserInput.bChainFromParentJoint,
                        g_UserInput.bEffectorToLastBone, g_UserInput.bCreateGroup);
    const Zelk::CStatus status =
        importer.ImportBVH(g_UserInput.strBVHFile, BaseName(g_UserInput.strBVHFile));
    if (!status.Succeeded()) {
        LogFailure(importer);
        if (importer.GetModelsCount() == 0) return status;
    }
    LogImportedModels(importer.GetModelsCount());
    model = importer.GetLastModel().GetRef();
    motion = importer.GetLastMotion().GetRef();
    basePose = importer.GetLastBasePose().GetRef();
    return Zelk::status::kOk;
}
