#include "app/import_report.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <vector>

#include "app/motion_facts.h"
#include "app/text.h"
#include "host/constants.h"

namespace app {
namespace {

using Json = nlohmann::ordered_json;

void TakeMotion(const ModelFacts& facts, const ImportRequest& request, ImportReport& report) {
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
std::string FirstError(const ImportRequest& request, const headless::Session& session) {
    bool skeletonDone = false;
    for (const headless::LogLine& line : session.Log()) {
        if (IsError(line)) {
            const bool isMotion = request.motionFile.empty() || skeletonDone;
            const std::string file = isMotion ? "" : EncodeUtf8(DecodeUtf8(request.file)) + ": ";
            return file + EncodeUtf8(line.text);
        }
        if (line.severity == Zelk::zkInfoSeverity) skeletonDone = true;
    }
    return {};
}

Json NumberOrNull(const std::optional<double>& number) {
    return number ? Json(*number) : Json(nullptr);
}

std::optional<double> OptionalNumber(const Json& value) {
    return value.is_null() ? std::nullopt : std::optional(value.get<double>());
}

}  // namespace

ImportReport ReportOf(const ImportRequest& request, const Outcome& outcome,
                      const headless::Session& session) {
    ImportReport report;
    report.error = FirstError(request, session);
    if (outcome.status == kImportFailed) return report;
    std::vector<const headless::Object*> models = session.GetScene().Models();
    if (outcome.models) models.resize(std::min(models.size(), *outcome.models));
    for (const headless::Object* model : models) {
        const ModelFacts facts = MeasureModel(*model);
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
                       {"error", report.error}};
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
        return report;
    } catch (const Json::exception&) {
        return std::nullopt;
    }
}

}  // namespace app
