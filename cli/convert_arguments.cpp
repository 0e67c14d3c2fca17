#include "cli/convert_arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <fmt/format.h>
#include <utility>

#include "cli/format_names.h"
#include "cli/honoured_options.h"
#include "cli/option_values.h"
#include "pairing/capture_kind.h"

namespace cli {
namespace {

constexpr std::size_t kMostJobs = 1000;

// Returns words of a command line: those of `options` that the user gave. Each option occurs once,
// with the last value that the user gave for it. The words are in the order of `options`, so they
// do not depend on the order in which the user gave the options.
std::vector<std::string> AsGiven(const std::vector<const CLI::Option*>& options) {
    std::vector<std::string> words;
    for (const CLI::Option* option : options) {
        if (option->count() == 0 || option->get_lnames().empty()) continue;
        const std::string& value = option->results().back();
        const bool isFlag = option->get_expected_max() == 0;
        if (!isFlag)
            words.push_back(fmt::format("--{}={}", option->get_lnames().front(), value));
        else if (value == "true")
            words.push_back("--" + option->get_lnames().front());
        else
            words.push_back("--" + option->get_fnames().front());
    }
    return words;
}

}  // namespace

void DescribeConvert(CLI::App& convert, ConvertWords& words) {
    DescribeImportOptions(convert, words.import);
    const std::vector<const CLI::Option*>& acclaim = words.import.acclaimOptions;
    for (const CLI::Option* option : std::as_const(convert).get_options())
        if (std::find(acclaim.begin(), acclaim.end(), option) == acclaim.end())
            words.passedOn.push_back(option);
    dataset::Request& request = words.request;
    convert.add_option("paths", request.paths)->required();
    convert.add_option("--to", words.formats)->allow_extra_args(false)->required();
    convert.add_option("--out-dir", request.outDir)->required();
    convert.add_option("--asf", request.skeleton);
    convert.add_option("-j,--jobs", words.parallel);
    convert.add_option("--time-limit", words.timeLimit);
    convert.add_flag("--no-clobber", request.noClobber);
    convert.add_flag("--resume", request.resume);
    convert.add_flag("--plan", request.plan);
    convert.add_flag("--timing", request.timing);
    convert.add_option("--plugin", request.plugin);
}

dataset::Request BuildConvertRequest(ConvertWords& words) {
    dataset::Request& request = words.request;
    const std::vector<const exporters::Format*> formats = ParseFormats("--to", words.formats);
    for (const exporters::Format* format : formats)
        request.formats.push_back(
            {std::string(format->extension), std::string(format->sideExtension)});
    if (request.outDir.empty()) throw UsageError("--out-dir: the name of the folder is empty");
    if (!request.skeleton.empty() &&
        pairing::KindOf(request.skeleton) != pairing::CaptureKind::Skeleton)
        throw UsageError(fmt::format("--asf {}: not an .asf file", request.skeleton));
    // The values are parsed here only to check them. A mistake is then reported once and not by
    // every import.
    ImportWords& import = words.import;
    ParseImportOptions(import, true);
    RequireHonoured(*import.command, formats, false);
    // If --fps is missing and --resample has no number, the rate comes from --preset. Because
    // --preset is for Acclaim files only, --resample is passed on only to imports of Acclaim files
    // in this case.
    if (!import.fps && import.resample == kRateOfFps) {
        std::erase(words.passedOn, import.resampleOption);
        import.acclaimOptions.push_back(import.resampleOption);
    }
    request.importOptions = AsGiven(words.passedOn);
    // A data set is kept, so each output says exactly what it was made from, even if the user did
    // not ask for it.
    std::erase(request.importOptions, "--provenance");
    request.hashSources = std::any_of(formats.begin(), formats.end(), [](const auto* format) {
        return (format->honoured & exporters::kProvenance) != 0;
    });
    request.acclaimOptions = AsGiven(import.acclaimOptions);
    if (words.parallel) request.parallel = Count("--jobs", *words.parallel, kMostJobs);
    if (words.timeLimit) {
        request.timeLimitSeconds = FiniteNumber("--time-limit", *words.timeLimit);
        if (request.timeLimitSeconds < 0.0)
            throw UsageError(
                fmt::format("--time-limit {}: expected a number of seconds, or 0 for no limit",
                            *words.timeLimit));
    }
    return request;
}

}  // namespace cli
