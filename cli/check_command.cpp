#include "cli/check_command.h"

#include <filesystem>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <string>
#include <unistd.h>

#include "cli/check_files.h"
#include "cli/print.h"
#include "cli/standard_input.h"
#include "dataset/exit_status.h"
#include "files/output_file.h"
#include "pairing/capture_kind.h"
#include "survey/finding_text.h"
#include "take/input_text.h"
#include "text/byte_sink.h"
#include "text/escapes.h"
#include "text/json_text.h"
#include "text/number_text.h"

namespace cli {
namespace {

constexpr int kDecimals = 3;

std::string Short(double number) {
    char room[text::kLongestNumber];
    return {room, text::WriteNumber(room, number, kDecimals)};
}

std::string Counted(std::size_t count, std::string_view what) {
    return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

// Returns a text such as
// "27 joints, 7 end sites, 69 channels, 257 frames, 60 frames per second, 4.283 seconds".
std::string CountsText(const survey::Facts& facts, pairing::CaptureKind kind) {
    std::string text;
    const auto add = [&](const std::string& part) { text += (text.empty() ? "" : ", ") + part; };
    if (kind != pairing::CaptureKind::Motion) {
        add(Counted(facts.joints, "joint"));
        add(Counted(facts.endSites, "end site"));
    }
    add(Counted(facts.channels, "channel"));
    if (facts.frames) add(Counted(*facts.frames, "frame"));
    if (facts.framesPerSecond) add(Short(*facts.framesPerSecond) + " frames per second");
    if (facts.seconds) add(Short(*facts.seconds) + " seconds");
    return text;
}

// Returns a text such as "height 171.3 (likely centimetres), y up, rotations ZXY". It is empty if
// nothing of this is known.
std::string ShapeText(const survey::Facts& facts) {
    std::string text;
    const auto add = [&](const std::string& part) { text += (text.empty() ? "" : ", ") + part; };
    if (facts.height) {
        const std::string unit =
            facts.unit.empty() ? "unit unknown" : fmt::format("likely {}", facts.unit);
        add(fmt::format("height {} ({})", Short(*facts.height), unit));
    }
    if (!facts.up.empty()) add(facts.up + " up");
    if (!facts.orders.empty()) add(fmt::format("rotations {}", fmt::join(facts.orders, " ")));
    return text;
}

void AppendNumber(std::string& out, std::string_view key, const std::optional<double>& number) {
    out += fmt::format(R"("{}": )", key);
    if (number)
        text::AppendJsonNumber(out, *number);
    else
        out += "null";
    out += ", ";
}

void AppendText(std::string& out, std::string_view key, const std::string& value) {
    out += fmt::format(R"("{}": )", key);
    if (value.empty())
        out += "null";
    else
        text::AppendJsonString(out, value);
    out += ", ";
}

std::string FactsJson(const survey::Facts& facts) {
    std::string out = fmt::format(R"({{"joints": {}, "endSites": {}, "channels": {}, )",
                                  facts.joints, facts.endSites, facts.channels);
    const std::string frames = facts.frames ? std::to_string(*facts.frames) : "null";
    out += fmt::format(R"("frames": {}, )", frames);
    AppendNumber(out, "fps", facts.framesPerSecond);
    AppendNumber(out, "seconds", facts.seconds);
    AppendNumber(out, "height", facts.height);
    AppendText(out, "unit", facts.unit);
    AppendText(out, "up", facts.up);
    out += R"("orders": [)";
    for (std::size_t index = 0; index < facts.orders.size(); ++index)
        out += fmt::format(R"({}"{}")", index > 0 ? ", " : "", facts.orders[index]);
    return out + "]}";
}

void PrintJson(const CheckedFile& file) {
    std::string out = R"({"file": )";
    text::AppendJsonString(out, file.input->file.path);
    out += fmt::format(R"(, "format": "{}", "findings": [)", pairing::NameOf(file.input->kind));
    for (std::size_t index = 0; index < file.survey.findings.size(); ++index) {
        if (index > 0) out += ", ";
        survey::AppendFindingJson(out, file.survey.findings[index]);
    }
    ToStdout()(out + R"(], "facts": )" + FactsJson(file.survey.facts) + "}\n");
}

void PrintForPeople(const CheckedFile& file) {
    const bool terminal = isatty(STDOUT_FILENO) != 0;
    for (const survey::Finding& finding : file.survey.findings)
        ToStdout()(survey::FindingLine(file.input->file.path, finding, terminal));
    if (file.survey.Has(survey::Severity::Error)) return;
    const std::string shown =
        terminal ? text::EscapeControls(file.input->file.path) : file.input->file.path;
    ToStdout()(fmt::format("{}: {}\n", shown, CountsText(file.survey.facts, file.input->kind)));
    const std::string shape = ShapeText(file.survey.facts);
    if (!shape.empty()) ToStdout()(fmt::format("  {}\n", shape));
}

survey::Options OptionsOf(const CheckRequest& request, survey::Purpose purpose) {
    survey::Options options;
    options.purpose = purpose;
    options.encoding = request.encoding;
    return options;
}

// Writes the mended text of the file. If nothing was mended, writes a copy of the file. If the file
// has an error, writes nothing. A packed file is written as plain text.
void WriteFixed(const CheckRequest& request, const CheckedFile& file) {
    if (file.survey.Has(survey::Severity::Error)) return;
    const std::string name = take::PlainName(file.input->file);
    files::OutputFile out(request.output.empty() ? request.outDir + '/' + name : request.output);
    if (file.survey.mended)
        file.survey.mended->Write(out);
    else
        out.Write(file.text);
    out.Commit();
}

// Writes the files that --fix asks for. Returns the exit status.
int Fix(const CheckRequest& request, const std::vector<CheckInput>& files) {
    int status = dataset::kImported;
    std::error_code error;
    if (!request.outDir.empty()) std::filesystem::create_directories(request.outDir, error);
    CheckFiles(files, OptionsOf(request, survey::Purpose::Fix), [&](const CheckedFile& file) {
        try {
            WriteFixed(request, file);
        } catch (const text::WriteError& problem) {
            PrintError(problem.what());
            status = dataset::kOutputFailed;
        }
    });
    return status;
}

}  // namespace

int RunCheck(const CheckRequest& request) {
    bool failed = false;
    std::vector<CheckInput> files = InputsOf(request);
    for (CheckInput& file : files)
        LoadStandardInput(file.file);
    CheckFiles(files, OptionsOf(request, survey::Purpose::Check), [&](const CheckedFile& file) {
        request.json ? PrintJson(file) : PrintForPeople(file);
        failed |= file.survey.Has(survey::Severity::Error) ||
                  (request.strict && file.survey.Has(survey::Severity::Warning));
    });
    const int written = request.fix ? Fix(request, files) : dataset::kImported;
    return written != dataset::kImported ? written
           : failed                      ? dataset::kImportFailed
                                         : dataset::kImported;
}

}  // namespace cli
