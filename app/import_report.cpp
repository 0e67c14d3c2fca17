#include "app/import_report.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <vector>

#include "export/motion_facts.h"
#include "headless/session.h"
#include "headless/text.h"
#include "host/constants.h"
#include "text/wide_text.h"

namespace app {
namespace {

using Json = nlohmann::ordered_json;

void TakeMotion(const exporters::ModelFacts& facts, const ImportRequest& request,
                ImportReport& report) {
    report.frames = facts.frames;
    report.framesPerSecond = request.framesPerSecond;
    if (!report.framesPerSecond && facts.secondsPerFrame > 0.0)
        report.framesPerSecond = 1.0 / facts.secondsPerFrame;
    report.seconds = std::nullopt;
    if (report.framesPerSecond)
        report.seconds = (facts.lastFrame - facts.firstFrame + 1.0) / *report.framesPerSecond;
}

// A skeleton that was imported is followed by its documentation, an information; all that comes
// after it is about the motion.
std::string FirstLoggedError(const ImportRequest& request,
                             const std::vector<headless::LogLine>& log) {
    bool skeletonDone = false;
    for (const headless::LogLine& line : log) {
        if (IsError(line)) {
            const bool isMotion = request.motionFile.empty() || skeletonDone;
            const std::string file =
                isMotion ? "" : text::EncodeUtf8(text::DecodeUtf8(request.file)) + ": ";
            return file + text::EncodeUtf8(headless::View(line.text));
        }
        if (line.severity == Zelk::zkInfoSeverity) skeletonDone = true;
    }
    return {};
}

// The finding that the import was refused for: the first error or, with a strict import, the first
// warning.
std::string Refusal(const ImportSurvey& survey) {
    for (const survey::Severity severity : {survey::Severity::Error, survey::Severity::Warning})
        for (const FileFindings& file : survey.findings)
            for (const survey::Finding& finding : file.findings)
                if (finding.severity == severity) {
                    const bool isMotion = &file == &survey.findings.back();
                    const std::string name =
                        isMotion ? "" : text::EncodeUtf8(text::DecodeUtf8(file.file)) + ": ";
                    return name + FindingText(finding);
                }
    return {};
}

// Whoever reads the report keeps so much of a line, however long the names in it.
std::string Shortened(std::string line) {
    constexpr std::size_t kLongest = 600;
    if (line.size() > kLongest) line = line.substr(0, kLongest) + "...\n";
    return text::EncodeUtf8(text::DecodeUtf8(line));
}

void RecordFindings(const ImportSurvey& survey, ImportReport& report) {
    for (const FileFindings& file : survey.findings)
        for (const survey::Finding& finding : file.findings)
            report.findings.push_back({std::string(finding.code), finding.severity,
                                       Shortened(FindingLine(file.file, finding, false))});
}

Json FindingsJson(const ImportReport& report) {
    Json findings = Json::array();
    for (const ImportReport::FoundCode& found : report.findings)
        findings.push_back({found.code, NameOf(found.severity), found.line});
    return findings;
}

survey::Severity SeverityNamed(const std::string& name) {
    for (const survey::Severity severity : {survey::Severity::Note, survey::Severity::Warning})
        if (name == NameOf(severity)) return severity;
    return survey::Severity::Error;
}

Json NumberOrNull(const std::optional<double>& number) {
    return number ? Json(*number) : Json(nullptr);
}

std::optional<double> OptionalNumber(const Json& value) {
    return value.is_null() ? std::nullopt : std::optional(value.get<double>());
}

}  // namespace

ImportReport ReportOf(const ImportSurvey& survey, const Outcome& outcome,
                      const std::vector<headless::LogLine>& log) {
    const ImportRequest& request = survey.request;
    ImportReport report;
    RecordFindings(survey, report);
    report.refused = survey.refused;
    report.error = survey.refused ? Refusal(survey) : FirstLoggedError(request, log);
    if (outcome.status == kImportFailed) return report;
    std::vector<const headless::Object*> models = headless::Session::Current().GetScene().Models();
    if (outcome.models) models.resize(std::min(models.size(), *outcome.models));
    for (const headless::Object* model : models) {
        const exporters::ModelFacts facts = exporters::MeasureModel(*model);
        report.joints += facts.joints;
        if (facts.frames > report.frames) TakeMotion(facts, request, report);
    }
    return report;
}

std::string ReportLine(const ImportReport& report) {
    const Json line = {{"joints", report.joints},
                       {"frames", report.frames},
                       {"fps", NumberOrNull(report.framesPerSecond)},
                       {"seconds", NumberOrNull(report.seconds)},
                       {"written", report.written},
                       {"error", report.error},
                       {"refused", report.refused},
                       {"findings", FindingsJson(report)}};
    return line.dump() + '\n';
}

std::optional<ImportReport> ReadReport(std::string_view line) {
    try {
        const Json read = Json::parse(line);
        ImportReport report;
        report.joints = read.at("joints").get<std::size_t>();
        report.frames = read.at("frames").get<std::size_t>();
        report.framesPerSecond = OptionalNumber(read.at("fps"));
        report.seconds = OptionalNumber(read.at("seconds"));
        report.written = read.at("written").get<bool>();
        report.error = read.at("error").get<std::string>();
        report.refused = read.at("refused").get<bool>();
        for (const Json& found : read.at("findings"))
            report.findings.push_back({found.at(0).get<std::string>(),
                                       SeverityNamed(found.at(1).get<std::string>()),
                                       found.at(2).get<std::string>()});
        return report;
    } catch (const Json::exception&) {
        return std::nullopt;
    }
}

}  // namespace app
