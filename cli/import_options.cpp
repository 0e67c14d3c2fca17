#include "cli/import_options.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <fmt/format.h>

#include "cli/option_values.h"
#include "take/request.h"

namespace cli {
namespace {

constexpr double kCmuFramesPerSecond = 120.0;
constexpr int kMostDigits = 15;

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

}  // namespace cli
