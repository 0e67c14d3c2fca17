#include "app/import_command.h"

#include <chrono>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <string>
#include <unistd.h>

#include "app/amc_rate.h"
#include "app/callback_run.h"
#include "app/import_report.h"
#include "app/import_survey.h"
#include "app/interrupt.h"
#include "app/locale_setup.h"
#include "app/original_lines.h"
#include "app/outcome.h"
#include "app/outputs.h"
#include "app/plugin_library.h"
#include "app/print.h"
#include "app/summary.h"
#include "app/tree.h"
#include "app/user_input_json.h"
#include "app/variant_list.h"
#include "export/json_record.h"
#include "headless/session.h"
#include "text/byte_sink.h"
#include "text/wide_text.h"

namespace app {
namespace {

constexpr wchar_t kBiovisionCommand[] = L"Biovision Import function";
constexpr wchar_t kAcclaimCommand[] = L"Acclaim Import function";

// The plug-in's path of a file: absolute, symbolic links as they are.
std::wstring PluginPath(const std::string& file) {
    return file.empty() ? std::wstring()
                        : text::DecodeUtf8(std::filesystem::absolute(file).string());
}

void AddSkeletonOptions(const ImportRequest& request, VariantList& arguments) {
    arguments.AddBoolean(request.addClip);
    arguments.AddBoolean(request.useNulls);
    arguments.AddBoolean(request.chainFromParentJoint);
    arguments.AddBoolean(request.effectorToLastBone);
    arguments.AddBoolean(request.createGroup);
}

VariantList ArgumentsOf(const ImportSurvey& survey) {
    const ImportRequest& request = survey.request;
    VariantList arguments;
    arguments.AddText(PluginPath(survey.file.path));
    if (request.format == SourceFormat::Acclaim) {
        arguments.AddText(PluginPath(survey.motion.path));
        arguments.AddBoolean(request.applyLimits);
        arguments.AddBoolean(request.lengthMultiplier.has_value());
        arguments.AddReal(request.lengthMultiplier.value_or(1.0));
    }
    AddSkeletonOptions(request, arguments);
    return arguments;
}

CallbackResult Import(const PluginLibrary& plugin, const ImportSurvey& survey) {
    const ImportRequest& request = survey.request;
    CallbackShow show;
    show.progress = request.progress;
    show.drawBar = !request.quiet || request.progress == Progress::On;
    show.errorsOnly = request.quiet;
    show.file = request.file;
    show.motionFile = request.motionFile;
    OriginalLines lines(survey);
    show.filter = [&](const headless::LogLine& line) { return lines.Restore(line); };
    // A text in a file's stead is UTF-8 wherever the user is.
    const bool isMended = survey.file.IsMended() || survey.motion.IsMended();
    const Utf8Characters characters(isMended);
    const bool acclaim = request.format == SourceFormat::Acclaim;
    return RunCallback(plugin, acclaim ? kAcclaimCommand : kBiovisionCommand, ArgumentsOf(survey),
                       show);
}

void PrintFindings(const ImportSurvey& survey) {
    const ImportRequest& request = survey.request;
    if (request.report) return;
    const bool terminal = isatty(STDERR_FILENO) != 0;
    for (const FileFindings& file : survey.findings)
        for (const survey::Finding& finding : file.findings)
            if (!request.quiet || finding.severity != survey::Severity::Note)
                ToStderr()(FindingLine(file.file, finding, terminal));
}

SummaryRequest SummaryOf(const ImportRequest& request, const Outcome& outcome) {
    SummaryRequest summary;
    summary.files.push_back(request.file);
    if (!request.motionFile.empty()) {
        summary.files.push_back(request.motionFile);
        // The survey tells of it otherwise.
        std::ifstream motion(request.motionFile, std::ios::binary);
        if (request.asIs && !StatesRate(motion)) summary.fileWithoutRate = request.motionFile;
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

// The arguments as the user gave them, whatever the plug-in was handed.
USERINPUT UserInputOf(const USERINPUT& input, const ImportRequest& request) {
    USERINPUT shown = input;
    const std::wstring file = PluginPath(request.file);
    if (request.format == SourceFormat::Biovision) {
        shown.strBVHFile = file.c_str();
        return shown;
    }
    shown.strASFFile = file.c_str();
    shown.strAMCFile = PluginPath(request.motionFile).c_str();
    return shown;
}

// One import from the survey to the last output.
class ImportRun {
  public:
    explicit ImportRun(const ImportRequest& request) : plugin_(request.plugin) {
        headless::Session& session = headless::Session::Current();
        session.Reset();
        CatchInterrupts(session);
        const auto start = std::chrono::steady_clock::now();
        {
            const UncancellableStretch survey;
            survey_ = SurveyImport(request);
        }
        PrintFindings(survey_);
        if (survey_.refused)
            outcome_.status = kImportFailed;
        else
            CallPlugin();
        const std::chrono::duration<double, std::milli> took =
            std::chrono::steady_clock::now() - start;
        loadMilliseconds_ = took.count();
    }

    int Finish() {
        const ImportRequest& request = survey_.request;
        OutputsResult written;
        if (outcome_.status != kCancelled)
            written =
                WriteOutputs(request, headless::Session::Current().GetScene(), Record(), outcome_);
        // convert, which reads the report, sends one signal at most. It must not end this process
        // before the report says that an output was written.
        if (!request.report) ReleaseInterrupts();
        if (outcome_.status == kCancelled || written.interrupted) return kCancelled;
        if (request.report) PrintReport(!written.milliseconds.empty());
        if (outcome_.status != kImportFailed) PrintScene(request, outcome_);
        if (request.timing) PrintTiming(written);
        return outcome_.status != kImportFailed && written.failed ? kOutputFailed : outcome_.status;
    }

  private:
    void CallPlugin() {
        result_ = Import(plugin_, survey_);
        survey_.folder.reset();
        outcome_ = JudgeImport(result_.code, result_.log, Interrupted());
    }

    exporters::RunRecord Record() const {
        const USERINPUT& input = plugin_.UserInput();
        const headless::Session& session = headless::Session::Current();
        exporters::RunRecord record{result_.code, result_.log, session.Bar(), session.Commands()};
        record.userInput =
            UserInputJson(survey_.refused ? input : UserInputOf(input, survey_.request));
        if (!survey_.request.asIs) record.findings = FindingsJson(survey_.findings);
        record.multiplied = survey_.multiplied;
        return record;
    }

    void PrintReport(bool wasWritten) const {
        ImportReport report = ReportOf(survey_, outcome_, result_.log);
        report.written = wasWritten;
        ToStdout()(ReportLine(report));
    }

    void PrintTiming(const OutputsResult& written) const {
        ToStdout()(fmt::format("load_ms={:.3f}\n", loadMilliseconds_));
        for (const double milliseconds : written.milliseconds)
            ToStdout()(fmt::format("write_ms={:.3f}\n", milliseconds));
    }

    const PluginLibrary plugin_;
    ImportSurvey survey_;
    CallbackResult result_;
    Outcome outcome_;
    double loadMilliseconds_ = 0.0;
};

}  // namespace

int RunImport(const ImportRequest& request) {
    try {
        return ImportRun(request).Finish();
    } catch (const text::WriteError& error) {
        PrintError(error.what());
        return kOutputFailed;
    }
}

}  // namespace app
