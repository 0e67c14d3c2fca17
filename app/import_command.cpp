#include "app/import_command.h"

#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <string>

#include "app/amc_rate.h"
#include "app/callback_run.h"
#include "app/import_report.h"
#include "app/interrupt.h"
#include "app/json_record.h"
#include "app/outcome.h"
#include "app/outputs.h"
#include "app/plugin_library.h"
#include "app/print.h"
#include "app/summary.h"
#include "app/text.h"
#include "app/tree.h"
#include "app/variant_list.h"
#include "headless/session.h"

namespace app {
namespace {

constexpr wchar_t kBiovisionCommand[] = L"Biovision Import function";
constexpr wchar_t kAcclaimCommand[] = L"Acclaim Import function";

// The plug-in's path of a file: absolute, symbolic links as they are.
std::wstring PluginPath(const std::string& file) {
    return file.empty() ? std::wstring() : DecodeUtf8(std::filesystem::absolute(file).string());
}

void AddSkeletonOptions(const ImportRequest& request, VariantList& arguments) {
    arguments.AddBoolean(request.addClip);
    arguments.AddBoolean(request.useNulls);
    arguments.AddBoolean(request.chainFromParentJoint);
    arguments.AddBoolean(request.effectorToLastBone);
    arguments.AddBoolean(request.createGroup);
}

CallbackResult Import(const PluginLibrary& plugin, const ImportRequest& request) {
    VariantList arguments;
    arguments.AddText(PluginPath(request.file));
    if (request.format == SourceFormat::Acclaim) {
        arguments.AddText(PluginPath(request.motionFile));
        arguments.AddBoolean(request.applyLimits);
        arguments.AddBoolean(request.lengthMultiplier.has_value());
        arguments.AddReal(request.lengthMultiplier.value_or(1.0));
    }
    AddSkeletonOptions(request, arguments);

    CallbackShow show;
    show.progress = request.progress;
    show.drawBar = !request.quiet || request.progress == Progress::On;
    show.errorsOnly = request.quiet;
    show.file = request.file;
    show.motionFile = request.motionFile;
    const bool acclaim = request.format == SourceFormat::Acclaim;
    return RunCallback(plugin, acclaim ? kAcclaimCommand : kBiovisionCommand, arguments, show);
}

SummaryRequest SummaryOf(const ImportRequest& request, const Outcome& outcome) {
    SummaryRequest summary;
    summary.files.push_back(request.file);
    if (!request.motionFile.empty()) {
        summary.files.push_back(request.motionFile);
        std::ifstream motion(request.motionFile, std::ios::binary);
        if (!StatesRate(motion)) summary.fileWithoutRate = request.motionFile;
    }
    summary.inPart = outcome.status == kImportedInPart;
    summary.models = outcome.models;
    summary.framesPerSecond = request.framesPerSecond;
    return summary;
}

void PrintScene(const ImportRequest& request, const Outcome& outcome) {
    const headless::Scene& scene = headless::Session::Current().GetScene();
    if (!request.quiet) PrintSummary(scene, SummaryOf(request, outcome), ToStdout());
    if (request.tree) PrintTree(scene, ToStdout());
}

}  // namespace

int RunImport(const ImportRequest& request) {
    const PluginLibrary plugin(request.plugin);
    const CallbackResult result = Import(plugin, request);
    const headless::Session& session = headless::Session::Current();
    const Outcome outcome = JudgeImport(result.code, session.Log(), Interrupted());

    OutputsResult written;
    if (outcome.status != kCancelled)
        written = WriteOutputs(request, {result.code, session, plugin.UserInput()}, outcome);
    // Whoever reads the report asks to stop only once, and is to hear of an output that was
    // written.
    if (!request.report) ReleaseInterrupts();
    if (outcome.status == kCancelled || written.interrupted) return kCancelled;

    if (request.report) {
        ImportReport report = ReportOf(request, outcome, session);
        report.written = !written.milliseconds.empty();
        ToStdout()(ReportLine(report));
    }
    if (outcome.status != kImportFailed) PrintScene(request, outcome);
    if (request.timing) {
        ToStdout()(fmt::format("load_ms={:.3f}\n", result.milliseconds));
        for (const double milliseconds : written.milliseconds)
            ToStdout()(fmt::format("write_ms={:.3f}\n", milliseconds));
    }
    return outcome.status != kImportFailed && written.failed ? kOutputFailed : outcome.status;
}

}  // namespace app
