#include "cli/import_options.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <fmt/format.h>
#include <limits>
#include <string_view>
#include <system_error>

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

// Returns the frame number, or `missing` if the text is empty. Returns nullopt for a text that is
// no whole number.
std::optional<std::int64_t> FrameNumber(std::string_view text, std::int64_t missing) {
    if (text.empty()) return missing;
    std::int64_t number = 0;
    const char* last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, number);
    if (error != std::errc() || end != last) return std::nullopt;
    return number;
}

exporters::FrameRange Frames(const std::string& text) {
    using Limits = std::numeric_limits<std::int64_t>;
    const std::size_t colon = text.find(':');
    const std::string_view all = text;
    std::optional<std::int64_t> first;
    std::optional<std::int64_t> last;
    if (colon != std::string::npos && all.size() > 1) {
        first = FrameNumber(all.substr(0, colon), Limits::min());
        last = FrameNumber(all.substr(colon + 1), Limits::max());
    }
    if (!first || !last)
        throw UsageError(fmt::format(
            "--frames {}: expected two frame numbers, FIRST:LAST, such as 10:20, 10: or :20",
            text));
    if (*first > *last)
        throw UsageError(
            fmt::format("--frames {}: the first frame comes after the last one", text));
    return {*first, *last};
}

}  // namespace

void DescribeImportOptions(CLI::App& command, ImportWords& words) {
    words.command = &command;
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
    exporters::Options& exports = words.request.exports;
    command.add_option("--frames", words.frames);
    command.add_flag("--in-place", exports.inPlace);
    command.add_flag("--all-nodes", exports.allNodes);
    command.add_flag("--aim", exports.aim);
    command.add_option("--animations", words.animations);
    command.add_flag("--float32", exports.float32);
    command.add_flag_function("--compress,!--no-compress", [&exports](std::int64_t count) {
        exports.compress = count > 0;  // a negated flag counts as -1
    });
    command.add_flag("--provenance", words.request.provenance);
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
    if (words.frames) request.exports.frames = Frames(*words.frames);
    if (words.animations)
        request.exports.animationPerModel = Choice<bool>("--animations", *words.animations,
                                                         {{"merged", false}, {"per-model", true}});
    if ((take.applyLimits || words.length || words.preset) && !isAcclaim)
        throw UsageError("--limits, --length and --preset are for Acclaim files");
    RequireKnownEncoding(take.encoding);
    if (take.asIs && (take.strict || !take.encoding.empty()))
        throw UsageError("--strict and --encoding need the survey, which --as-is skips");
}

}  // namespace cli
