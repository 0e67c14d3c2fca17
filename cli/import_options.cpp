#include "cli/import_options.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <filesystem>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <map>
#include <set>

#include "cli/option_values.h"
#include "cli/standard_input.h"
#include "export/formats.h"
#include "files/links.h"
#include "pairing/capture_kind.h"
#include "survey/encoding.h"
#include "take/request.h"
#include "text/path_text.h"

namespace cli {
namespace {

constexpr double kCmuFramesPerSecond = 120.0;
constexpr int kMostDigits = 15;

// Decides the format from the extensions of the files, or from --as, and sets the request's files.
// Throws UsageError if a file has the wrong extension.
void SetFiles(const ImportWords& words, take::Request& request) {
    using pairing::CaptureKind;
    const std::string file = request.file.path;
    const std::string& motionFile = words.motionFile;
    const std::string files[] = {file, motionFile};
    const std::optional<CaptureKind> as = ParseAs(words.as, files);
    const auto kindOf = [&](const std::string& path) {
        return IsStandardInput(path) ? as : pairing::KindOf(path);
    };
    const std::optional<CaptureKind> kind = kindOf(file);
    if (!kind && IsStandardInput(file))
        throw UsageError("-: --as bvh or --as asf must say what the standard input is");
    if (!kind) throw UsageError(fmt::format("{}: not a .bvh or .asf file", file));
    if (kind == CaptureKind::Motion)
        throw UsageError(
            fmt::format("{}: an .amc file needs its skeleton, SKEL.asf, before it", file));
    const bool isAlone = kind == CaptureKind::Biovision;
    request.format = isAlone ? take::Format::Biovision : take::Format::Acclaim;
    request.file = InputOf(file, *kind);
    if (motionFile.empty()) return;
    if (isAlone) throw UsageError(fmt::format("{}: a .bvh file takes no second file", motionFile));
    const bool isOnlyPosition = IsStandardInput(motionFile) && !as;
    if (!isOnlyPosition && kindOf(motionFile) != CaptureKind::Motion)
        throw UsageError(fmt::format("{}: not an .amc file", motionFile));
    request.motion = InputOf(motionFile, CaptureKind::Motion);
}

// If --resample has no number, --fps is the rate of the samples, and the take keeps the rate of its
// file. If --resample has a number or is missing, --fps is the rate of the take.
void SetRates(const ImportWords& words, ImportRequest& request) {
    std::optional<double> rate;
    if (words.fps) rate = PositiveNumber("--fps", *words.fps);
    if (!words.resample || *words.resample != kRateOfFps) {
        request.take.framesPerSecond = rate;
        if (words.resample)
            request.exports.resampleTo = PositiveNumber("--resample", *words.resample);
        return;
    }
    if (!rate && request.take.preset == take::Preset::Cmu) rate = kCmuFramesPerSecond;
    if (!rate) throw UsageError("--resample needs a rate: --resample N, or --fps N with it");
    request.exports.resampleTo = rate;
}

int Digits(const std::string& text) {
    const double number = FiniteNumber("--digits", text);
    if (number < 0.0 || number > kMostDigits || number != std::floor(number))
        throw UsageError(fmt::format("--digits {}: expected 0 to {}", text, kMostDigits));
    return static_cast<int>(number);
}

// Returns the absolute path with all symbolic links resolved, so that two paths of the same file
// give the same text.
std::string Resolved(const std::string& path) {
    std::error_code error;
    const auto absolute = std::filesystem::absolute(files::FollowLinks(path), error);
    const auto resolved = std::filesystem::weakly_canonical(absolute, error);
    return error ? path : resolved.string();
}

const exporters::Format* FormatOf(const std::string& path) {
    if (const auto* format = exporters::FindFormat(text::LowerCaseExtension(path))) return format;
    std::set<std::string_view> known;
    for (const exporters::Format& format : exporters::Formats())
        known.insert(format.extension);
    throw UsageError(
        fmt::format("{}: unknown output format; known are {}", path, fmt::join(known, " ")));
}

void ReadOutputs(const ImportWords& words, ImportRequest& request) {
    std::set<std::string> names;
    for (const std::string& path : words.outputs) {
        const OutputRequest output = {path, FormatOf(path)};
        for (const std::string& file : exporters::FilesOf(*output.format, path)) {
            RequireNotOverwritten(request.take.file.path, file);
            RequireNotOverwritten(words.motionFile, file);
            if (!names.insert(Resolved(file)).second)
                throw UsageError(fmt::format("{}: two outputs would write this file", file));
        }
        request.outputs.push_back(output);
    }
}

}  // namespace

void DescribeImportOptions(CLI::App& command, ImportWords& words) {
    take::Request& request = words.request.take;
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
    command.add_flag("--mesh,!--no-mesh", words.request.exports.mesh);
    command.add_option("--digits", words.digits);
}

void DescribeImport(CLI::App& import, ImportWords& words) {
    ImportRequest& request = words.request;
    import.add_option("file", request.take.file.path)->required();
    import.add_option("motion", words.motionFile);
    import.add_option("--as", words.as);
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

void ParseImportOptions(ImportWords& words, bool isAcclaim) {
    ImportRequest& request = words.request;
    take::Request& take = request.take;
    take.useNulls = !words.bones;
    if (words.preset)
        take.preset = Choice<take::Preset>("--preset", *words.preset,
                                           {{"auto", take::Preset::Auto},
                                            {"cmu", take::Preset::Cmu},
                                            {"none", take::Preset::None}});
    if (words.length) take.lengthMultiplier = FiniteNumber("--length", *words.length);
    SetRates(words, request);
    if (words.digits) request.exports.digits = Digits(*words.digits);
    if (words.scale) request.exports.scale = PositiveNumber("--scale", *words.scale);
    if (words.up)
        request.exports.up = Choice<exporters::UpAxis>("--up", *words.up,
                                                       {{"x", exporters::UpAxis::X},
                                                        {"y", exporters::UpAxis::Y},
                                                        {"z", exporters::UpAxis::Z}});
    if ((take.applyLimits || words.length || words.preset) && !isAcclaim)
        throw UsageError("--limits, --length and --preset are for Acclaim files");
    RequireKnownEncoding(take.encoding);
    if (take.asIs && (take.strict || !take.encoding.empty()))
        throw UsageError("--strict and --encoding need the survey, which --as-is skips");
}

ImportRequest BuildImportRequest(ImportWords& words) {
    ImportRequest& request = words.request;
    request.progress = ProgressChoice(words.progress);
    if (request.report) request.quiet = true;
    SetFiles(words, request.take);
    ParseImportOptions(words, request.take.format == take::Format::Acclaim);
    // A file that is not mended is decoded with the user's character locale. The user's other
    // programs decode the file in the same way.
    request.take.readsInLocale = true;
    ReadOutputs(words, request);
    return request;
}

}  // namespace cli
