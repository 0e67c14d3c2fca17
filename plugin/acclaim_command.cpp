#include "acclaim/acclaim_import.h"
#include "mocap/scene_helpers.h"
#include "plugin/import_commands.h"
#include "plugin/outcome.h"
#include "plugin/user_input.h"

Zelk::CStatus ImportAcclaim(Zelk::CRef& model, Zelk::CRef& basePose, Zelk::CRef& motion) {
    if (g_UserInput.strASFFile.IsEmpty()) {
        LogMissingFileName();
        return plugin::kNoFileName;
    }
    LogStatus(L"Importing Acclaim Files...");

    CAcclaimImport importer;
    importer.SetOptions(g_UserInput.bUseNulls, g_UserInput.bChainFromParentJoint,
                        g_UserInput.bEffectorToLastBone, g_UserInput.bCreateGroup);
    importer.ApplyLimits(g_UserInput.bApplyLimits);
    if (g_UserInput.bOverrideLength)
        importer.OverrideLengthMultiplier(true, g_UserInput.dLengthMultiplier);

    Zelk::CStatus status =
        importer.ImportSkeleton(g_UserInput.strASFFile, BaseName(g_UserInput.strASFFile));
    if (!status.Succeeded()) {
        LogFailure(importer);
        return status;
    }
    // The documentation is logged only if the skeleton was imported. No log line says that the
    // motion was imported; if that fails, LogFailure logs the reason.
    LogResult(importer.GetDocumentation());
    if (!g_UserInput.strAMCFile.IsEmpty()) {
        status = importer.ImportMotion(g_UserInput.strAMCFile, BaseName(g_UserInput.strAMCFile));
        if (!status.Succeeded()) {
            LogFailure(importer);
            return status;
        }
        basePose = importer.GetLastBasePose().GetRef();
        motion = importer.GetLastMotion().GetRef();
    }
    model = importer.GetLastModel().GetRef();
    return Zelk::status::kOk;
}
