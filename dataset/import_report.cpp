#include "dataset/import_report.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <vector>

namespace dataset {
namespace {

using Json = nlohmann::ordered_json;

Json FindingsJson(const ImportReport& report) {
    Json findings = Json::array();
    for (const ImportReport::ReportedFinding& found : report.findings)
        findings.push_back({found.code, found.severity, found.line});
    return findings;
}

Json NumberOrNull(const std::optional<double>& number) {
    return number ? Json(*number) : Json(nullptr);
}

Json OutputsJson(const ImportReport& report) {
    Json outputs = Json::array();
    for (const std::optional<double>& milliseconds : report.outputs)
        outputs.push_back(NumberOrNull(milliseconds));
    return outputs;
}

std::optional<double> OptionalNumber(const Json& value) {
    return value.is_null() ? std::nullopt : std::optional(value.get<double>());
}

}  // namespace

std::string ReportLine(const ImportReport& report) {
    const Json line = {{"joints", report.joints},
                       {"frames", report.frames},
                       {"fps", NumberOrNull(report.framesPerSecond)},
                       {"seconds", NumberOrNull(report.seconds)},
                       {"outputs", OutputsJson(report)},
                       {"error", report.error},
                       {"refused", report.refused},
                       {"findings", FindingsJson(report)},
                       {"load_ms", report.loadMilliseconds},
                       {"hash_ms", report.hashMilliseconds},
                       {"disk_full", report.diskIsFull}};
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
        for (const Json& milliseconds : read.at("outputs"))
            report.outputs.push_back(OptionalNumber(milliseconds));
        report.error = read.at("error").get<std::string>();
        report.refused = read.at("refused").get<bool>();
        for (const Json& found : read.at("findings"))
            report.findings.push_back({found.at(0).get<std::string>(),
                                       found.at(1).get<std::string>(),
                                       found.at(2).get<std::string>()});
        report.loadMilliseconds = read.at("load_ms").get<double>();
        report.hashMilliseconds = read.at("hash_ms").get<double>();
        report.diskIsFull = read.at("disk_full").get<bool>();
        return report;
    } catch (const Json::exception&) {
        return std::nullopt;
    }
}

}  // namespace dataset
