#include "app/import_options.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <filesystem>
#include <fmt/format.h>
#include <map>
#include <set>

#include "app/option_values.h"
#include "export/formats.h"
#include "files/links.h"
#include "pairing/capture_kind.h"
#include "survey/encoding.h"
#include "text/path_text.h"

namespace app {
namespace {

constexpr double kCmuFramesPerSecond = 120.0;
constexpr int kMostDigits = 15;

void FindFormat(ImportRequest& request) {
    using pairing::CaptureKind;
    const std::optional<CaptureKind> kind = pairing::KindOf(request.file);
    if (!kind) throw UsageError(fmt::format("{}: neither a .bvh nor an .asf file", request.file));
    if (kind == CaptureKind::Motion)
        throw UsageError(
            fmt::format("{}: a motion needs its skeleton, SKEL.asf, before it", request.file));
    const bool isAlone = kind == CaptureKind::Biovision;
    request.format = isAlone ? SourceFormat::Biovision : SourceFormat::Acclaim;
    if (request.motionFile.empty()) return;
    if (isAlone)
        throw UsageError(fmt::format("{}: a .bvh file is imported alone", request.motionFile));
    if (pairing::KindOf(request.motionFile) != CaptureKind::Motion)
        throw UsageError(fmt::format("{}: not an .amc file", request.motionFile));
}

// --fps alone is the take's rate. A bare --resample makes it the rate of the samples, and the
// take's own is then what it was.
void SetRates(const ImportWords& words, ImportRequest& request) {
    std::optional<double> rate;
    if (words.fps) rate = PositiveNumber("--fps", *words.fps);
    if (!words.resample || *words.resample != kRateOfFps) {
        request.framesPerSecond = rate;
        if (words.resample) request.resampleTo = PositiveNumber("--resample", *words.resample);
        return;
    }
    if (!rate && request.preset == Preset::Cmu) rate = kCmuFramesPerSecond;
    if (!rate) throw UsageError("--resample needs a rate: --resample N, or --fps N beside it");
    request.resampleTo = rate;
}

int Digits(const std::string& text) {
    const double number = FiniteNumber("--digits", text);
    if (number < 0.0 || number > kMostDigits || number != std::floor(number))
        throw UsageError(fmt::format("--digits {}: expected 0 to {}", text, kMostDigits));
    return static_cast<int>(number);
}

std::string Resolved(const std::string& path) {
    std::error_code unreadable;
    const auto absolute = std::filesystem::absolute(files::FollowLinks(path), unreadable);
    const auto resolved = std::filesystem::weakly_canonical(absolute, unreadable);
    return unreadable ? path : resolved.string();
}

const exporters::Format* FormatOf(const std::string& path) {
    if (const auto* format = exporters::FindFormat(text::LowerCaseExtension(path))) return format;
    std::string known;
    for (const exporters::Format& format : exporters::Formats())
        known += fmt::format(" {}", format.extension);
    throw UsageError(fmt::format("{}: no such output; known are{}", path, known));
}

void NameOutputs(const ImportWords& words, ImportRequest& request) {
    std::set<std::string> taken;
    for (const std::string& path : words.outputs) {
        const OutputRequest output = {path, FormatOf(path)};
        for (const std::string& file : exporters::FilesOf(*output.format, path)) {
            RefuseToOverwrite(file, request.file);
            RefuseToOverwrite(file, request.motionFile);
            if (!taken.insert(Resolved(file)).second)
                throw UsageError(fmt::format("{}: named as an output twice", file));
        }
        request.outputs.push_back(output);
    }
}

}  // namespace

void DescribeImportOptions(CLI::App& command, ImportWords& words) {
    ImportRequest& request = words.request;
    CLI::Option* nulls = command.add_flag("--nulls", words.nulls);
    command.add_flag("--bones", words.bones)->excludes(nulls);
    command.add_flag("--chain-from-parent,!--no-chain-from-parent", request.chainFromParentJoint);
    command.add_flag("--effector-to-last-bone", request.effectorToLastBone);
    command.add_flag("--group,!--no-group", request.createGroup);
    command.add_flag("--clip", request.addClip);
    words.acclaimOptions = {
        command.add_flag("--limits", request.applyLimits),
        command.add_option("--length", words.length),
        command.add_option("--preset", words.preset),
    };
    command.add_flag("--as-is", request.asIs);
    command.add_flag("--strict", request.strict);
    command.add_option("--encoding", request.encoding);
    command.add_option("--scale", words.scale);
    command.add_option("--up", words.up);
    command.add_option("--fps", words.fps);
    words.resampleOption = command.add_option("--resample", words.resample);
    command.add_flag("--mesh,!--no-mesh", request.mesh);
    command.add_option("--digits", words.digits);
}

void DescribeImport(CLI::App& import, ImportWords& words) {
    ImportRequest& request = words.request;
    import.add_option("file", request.file)->required();
    import.add_option("motion", request.motionFile);
    DescribeImportOptions(import, words);
    import.add_option("-o,--output", words.outputs)->allow_extra_args(false);
    import.add_flag("--make-folders", request.makeFolders);
    import.add_flag("--tree", request.tree);
    import.add_flag("--quiet", request.quiet);
    import.add_flag("--timing", request.timing);
    import.add_option("--progress", words.progress);
    import.add_option("--plugin", request.plugin);
    import.add_flag("--report", request.report);
}

void UnderstandImportOptions(ImportWords& words) {
    ImportRequest& request = words.request;
    request.useNulls = !words.bones;
    if (words.preset)
        request.preset =
            Choice<Preset>("--preset", *words.preset,
                           {{"auto", Preset::Auto}, {"cmu", Preset::Cmu}, {"none", Preset::None}});
    if (words.length) request.lengthMultiplier = FiniteNumber("--length", *words.length);
    SetRates(words, request);
    if (words.digits) request.digits = Digits(*words.digits);
    if (words.scale) request.scale = PositiveNumber("--scale", *words.scale);
    if (words.up)
        request.up = Choice<UpAxis>("--up", *words.up, {{"y", UpAxis::Y}, {"z", UpAxis::Z}});
    const bool acclaimOnly = request.applyLimits || words.length || words.preset;
    if (acclaimOnly && request.format != SourceFormat::Acclaim)
        throw UsageError("--limits, --length and --preset are for Acclaim files");
    if (!request.encoding.empty() && !survey::IsKnownEncoding(request.encoding))
        throw UsageError(fmt::format("--encoding {}: no encoding that iconv knows ('iconv --list')",
                                     request.encoding));
    if (request.asIs && (request.strict || !request.encoding.empty()))
        throw UsageError("--strict and --encoding are about the survey, which --as-is leaves out");
}

ImportRequest UnderstandImport(ImportWords& words) {
    words.request.progress = ProgressChoice(words.progress);
    if (words.request.report) words.request.quiet = true;
    FindFormat(words.request);
    UnderstandImportOptions(words);
    NameOutputs(words, words.request);
    return words.request;
}

}  // namespace app
