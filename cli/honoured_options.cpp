#include "cli/honoured_options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <fmt/format.h>
#include <string>

#include "cli/arguments.h"
#include "cli/suggestion.h"

namespace cli {
namespace {

struct HonouredOption {
    const char* name;
    unsigned bit;  // of exporters::Honoured
    bool isOfTree = false;
};

constexpr HonouredOption kOptions[] = {
    {"--scale", exporters::kScale, true},
    {"--up", exporters::kUpAxis, true},
    {"--resample", exporters::kResampling},
    {"--mesh", exporters::kMesh},
    {"--digits", exporters::kDigits},
    {"--frames", exporters::kFrames},
    {"--in-place", exporters::kInPlace},
    {"--all-nodes", exporters::kAllNodes},
    {"--aim", exporters::kAim},
    {"--animations", exporters::kAnimations},
    {"--float32", exporters::kFloat32},
    {"--compress", exporters::kCompress},
    {"--provenance", exporters::kProvenance},
};

// Options that need any output. --csv-names needs one of a certain format.
constexpr const char* kOptionsOfOutputs[] = {"--make-folders", "--no-clobber"};
constexpr char kCsvNames[] = "--csv-names";
constexpr std::string_view kCsv = ".csv";

// Returns the option if the user gave it. Null if the command does not have it either.
const CLI::Option* FindGiven(const CLI::App& command, const char* name) {
    const CLI::Option* option = command.get_option_no_throw(name);
    return option && option->count() > 0 ? option : nullptr;
}

// Returns the name of the option as the user gave it: --mesh and --no-mesh are one option.
std::string GivenName(const CLI::Option& option) {
    const bool isNegated = option.get_expected_max() == 0 && option.results().back() == "false" &&
                           !option.get_fnames().empty();
    return "--" + (isNegated ? option.get_fnames() : option.get_lnames()).front();
}

[[noreturn]] void Refuse(const std::string& option, const std::vector<std::string>& honouring) {
    throw UsageError(fmt::format("{}: no output honours it; {} {}", option,
                                 ListOf(honouring, "and"), honouring.size() == 1 ? "does" : "do"));
}

}  // namespace

void RequireHonoured(const CLI::App& command, const std::vector<const exporters::Format*>& formats,
                     bool tree) {
    const bool canPrintTree = command.get_option_no_throw("--tree") != nullptr;
    for (const HonouredOption& honoured : kOptions) {
        const CLI::Option* const option = FindGiven(command, honoured.name);
        if (!option || (tree && honoured.isOfTree)) continue;
        const auto honours = [&](const exporters::Format& format) {
            return (format.honoured & honoured.bit) != 0;
        };
        if (std::any_of(formats.begin(), formats.end(),
                        [&](const auto* format) { return honours(*format); }))
            continue;
        std::vector<std::string> honouring;
        for (const exporters::Format& format : exporters::Formats())
            if (honours(format)) honouring.emplace_back(format.extension);
        if (honoured.isOfTree && canPrintTree) honouring.emplace_back("--tree");
        Refuse(GivenName(*option), honouring);
    }
    const bool hasCsv = std::any_of(formats.begin(), formats.end(),
                                    [](const auto* format) { return format->extension == kCsv; });
    if (FindGiven(command, kCsvNames) && !hasCsv) Refuse(kCsvNames, {std::string(kCsv)});
    for (const char* const name : kOptionsOfOutputs)
        if (formats.empty() && FindGiven(command, name))
            throw UsageError(fmt::format("{}: there is no output; -o FILE names one", name));
}

}  // namespace cli
