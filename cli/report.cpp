#include "cli/report.h"

#include <algorithm>
#include <string>
#include <vector>

#include "bridge/export_input.h"
#include "export/motion_facts.h"
#include "headless/text.h"
#include "survey/finding_text.h"
#include "take/outcome.h"
#include "text/utf8.h"
#include "text/wide_text.h"

namespace cli {
namespace {

using dataset::ImportReport;

void RecordMotion(const exporters::ModelFacts& facts, const take::Result& result,
                  ImportReport& report) {
    report.frames = facts.frames;
    report.framesPerSecond = result.framesPerSecond;
    if (!report.framesPerSecond && facts.secondsPerFrame > 0.0)
        report.framesPerSecond = 1.0 / facts.secondsPerFrame;
    report.seconds = std::nullopt;
    if (report.framesPerSecond)
        report.seconds = (facts.lastFrame - facts.firstFrame + 1.0) / *report.framesPerSecond;
}

// Returns the text to put before a message about the file: its path and a colon. Returns an empty
// text if the file is the job's source, because the index names the source already.
std::string FilePrefix(const std::string& file, bool isJobFile) {
    return isJobFile ? "" : text::ReplaceInvalidUtf8(file) + ": ";
}

std::string FirstLoggedError(const take::Request& request, const take::Result& result) {
    take::LogSubject subject;
    for (const headless::LogLine& line : result.recording.log) {
        // The job's source is the motion or, if there is none, the only file.
        const bool isJobFile = subject.IsMotion(line) || !request.motion;
        if (take::IsError(line))
            return FilePrefix(request.file.path, isJobFile) +
                   text::EncodeUtf8(headless::View(line.text));
    }
    return {};
}

std::string Refusal(const take::Result& result) {
    const take::FindingInFile refusal = take::RefusalOf(result.findings);
    if (!refusal.finding) return {};
    return FilePrefix(refusal.file->file, refusal.file == &result.findings.back()) +
           survey::FindingText(*refusal.finding);
}

// Shortens a line that contains a very long name, because convert keeps only the first part of an
// import's output (ImportProcess).
std::string Shortened(std::string line) {
    constexpr std::size_t kLongest = 600;
    if (line.size() > kLongest) line = line.substr(0, kLongest) + "...\n";
    return text::ReplaceInvalidUtf8(line);
}

void RecordFindings(const take::Result& result, ImportReport& report) {
    for (const take::FileFindings& file : result.findings)
        for (const survey::Finding& finding : file.findings)
            report.findings.push_back({std::string(finding.code),
                                       std::string(survey::NameOf(finding.severity)),
                                       Shortened(survey::FindingLine(file.file, finding))});
}

}  // namespace

ImportReport ReportOf(const take::Request& request, const take::Result& result) {
    ImportReport report;
    RecordFindings(result, report);
    report.refused = result.isRefused;
    report.error = result.isRefused ? Refusal(result) : FirstLoggedError(request, result);
    if (!result.IsImported()) return report;
    std::vector<const headless::Object*> models = result.Scene().Models();
    if (result.outcome.models) models.resize(std::min(models.size(), *result.outcome.models));
    const std::vector<exporters::FileSkeleton> skeletons = bridge::SkeletonsOf(result);
    for (std::size_t index = 0; index < models.size(); ++index) {
        const exporters::ModelFacts facts = exporters::MeasureModel(
            result.Scene(), *models[index], index < skeletons.size() ? &skeletons[index] : nullptr);
        report.joints += facts.joints;
        if (facts.frames > report.frames) RecordMotion(facts, result, report);
    }
    return report;
}

}  // namespace cli
