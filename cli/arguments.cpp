#include "cli/arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <map>
#include <set>
#include <utility>

#include "cli/help_text.h"
#include "cli/import_options.h"
#include "cli/option_values.h"
#include "dataset/request.h"
#include "export/formats.h"
#include "pairing/capture_kind.h"
#include "take/commands.h"
#include "text/path_text.h"
#include "text/wide_text.h"

namespace cli {
namespace {

constexpr double kMostJobs = 1000;

struct ConvertWords {
    std::string format;
    std::optional<std::string> parallel;
    std::optional<std::string> timeLimit;
};

// What was asked for on the whole, filled in while CLI11 parses.
struct Words {
    ImportWords import;
    CheckRequest check;
    CommandRequest command;
    std::vector<std::string> commandArguments;
    std::optional<std::string> commandProgress;
    dataset::Request convert;
    ConvertWords convertWords;
    ImportWords convertImport;
    // Of convert: those that each import gets.
    std::vector<const CLI::Option*> passedOn;
};

// "--bones=1" and the like are wrong usage.
void RefuseValuesOfFlags(CLI::App& command) {
    for (CLI::Option* option : command.get_options())
        if (option->get_expected_max() == 0) option->disable_flag_override();
}

void DescribeConvert(CLI::App& convert, Words& words) {
    DescribeImportOptions(convert, words.convertImport);
    const std::vector<const CLI::Option*>& acclaim = words.convertImport.acclaimOptions;
    for (const CLI::Option* option : std::as_const(convert).get_options())
        if (std::find(acclaim.begin(), acclaim.end(), option) == acclaim.end())
            words.passedOn.push_back(option);
    dataset::Request& request = words.convert;
    convert.add_option("paths", request.paths)->required();
    convert.add_option("--to", words.convertWords.format)->required();
    convert.add_option("--out-dir", request.outDir)->required();
    convert.add_option("--asf", request.skeleton);
    convert.add_option("-j,--jobs", words.convertWords.parallel);
    convert.add_option("--time-limit", words.convertWords.timeLimit);
    convert.add_flag("--resume", request.resume);
    convert.add_flag("--plan", request.plan);
    convert.add_option("--plugin", request.plugin);
}

void DescribeCommand(CLI::App& command, Words& words) {
    command.add_option("name", words.command.name)->required();
    command.add_option("arguments", words.commandArguments);
    command.add_option("--json", words.command.jsonFile);
    command.add_option("--progress", words.commandProgress);
    command.add_option("--plugin", words.command.plugin);
}

// Outputs that would overwrite each other or an input.
void RefuseWrongOutputs(const CheckRequest& request) {
    std::set<std::string> names;
    for (const std::string& file : request.files) {
        const std::string name(text::NamePart(file));
        if (!names.insert(name).second)
            throw UsageError(fmt::format("--out-dir: two files are called {}", name));
        const std::string output =
            request.output.empty() ? request.outDir + '/' + name : request.output;
        for (const std::string& input : request.files)
            RefuseToOverwrite(output, input);
    }
}

void DescribeCheck(CLI::App& check, CheckRequest& request) {
    check.add_option("files", request.files)->required();
    check.add_flag("--json", request.json);
    check.add_flag("--strict", request.strict);
    check.add_flag("--fix", request.fix);
    check.add_option("-o,--output", request.output);
    check.add_option("--out-dir", request.outDir);
    check.add_option("--encoding", request.encoding);
}

CheckRequest UnderstandCheck(const CheckRequest& request) {
    for (const std::string& file : request.files) {
        if (!pairing::KindOf(file))
            throw UsageError(fmt::format("{}: neither a .bvh, an .asf nor an .amc file", file));
    }
    RequireKnownEncoding(request.encoding);
    const bool hasOutput = !request.output.empty();
    const bool hasFolder = !request.outDir.empty();
    if (!request.fix && (hasOutput || hasFolder))
        throw UsageError("-o and --out-dir are where --fix writes to");
    if (!request.fix) return request;
    if (hasOutput == hasFolder)
        throw UsageError("--fix writes to one of -o OUT, for one file, and --out-dir DIR");
    if (hasOutput && request.files.size() > 1)
        throw UsageError("-o takes one file; --out-dir DIR takes several");
    RefuseWrongOutputs(request);
    return request;
}

// The options as they were given, each once and in the order they are described in.
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

dataset::Request UnderstandConvert(Words& words) {
    dataset::Request& request = words.convert;
    const exporters::Format* format = exporters::FindFormat('.' + words.convertWords.format);
    if (!format)
        throw UsageError(fmt::format("--to {}: no such output", words.convertWords.format));
    request.extension = format->extension;
    request.sideExtension = format->sideExtension;
    if (request.outDir.empty()) throw UsageError("--out-dir: no folder named");
    if (!request.skeleton.empty() &&
        pairing::KindOf(request.skeleton) != pairing::CaptureKind::Skeleton)
        throw UsageError(fmt::format("--asf {}: not an .asf file", request.skeleton));
    // Wrong values are better said once than by every import.
    ImportWords& import = words.convertImport;
    UnderstandImportOptions(import, true);
    // At the preset's rate, which others do not have.
    if (!import.fps && import.resample == kRateOfFps) {
        std::erase(words.passedOn, import.resampleOption);
        import.acclaimOptions.push_back(import.resampleOption);
    }
    request.importOptions = AsGiven(words.passedOn);
    request.acclaimOptions = AsGiven(import.acclaimOptions);
    if (words.convertWords.parallel) {
        const double count = PositiveNumber("--jobs", *words.convertWords.parallel);
        if (count != std::floor(count) || count > kMostJobs)
            throw UsageError(
                fmt::format("--jobs {}: not a number of imports that can run at a time",
                            *words.convertWords.parallel));
        request.parallel = static_cast<std::size_t>(count);
    }
    if (words.convertWords.timeLimit) {
        request.timeLimitSeconds = FiniteNumber("--time-limit", *words.convertWords.timeLimit);
        if (request.timeLimitSeconds < 0.0)
            throw UsageError(fmt::format("--time-limit {}: expected seconds, or 0 for none",
                                         *words.convertWords.timeLimit));
    }
    return request;
}

// The callback reads a text at each of these places: what is neither one nor zero leads it nowhere.
void RefuseNumbersForTexts(const CommandRequest& request) {
    const take::FormatInfo* command = take::FindCommand(text::DecodeUtf8(request.name));
    if (!command) return;
    for (std::size_t place = 0; place < request.arguments.size(); ++place) {
        const RawArgument& argument = request.arguments[place];
        const bool isZero = !argument.boolean && argument.word == 0 && argument.real == 0.0 &&
                            !std::signbit(argument.real);
        if (place < command->textArguments && argument.kind != RawArgument::Kind::Text && !isZero)
            throw UsageError(
                fmt::format("argument {} of {} is a text, str:...", place + 1, request.name));
    }
}

CommandRequest UnderstandCommand(Words& words) {
    words.command.progress = ProgressChoice(words.commandProgress);
    for (const std::string& argument : words.commandArguments) {
        words.command.arguments.push_back(ParseRawArgument(argument));
        if (!words.command.jsonFile.empty())
            RefuseToOverwrite(words.command.jsonFile, words.command.arguments.back().text);
    }
    RefuseNumbersForTexts(words.command);
    return words.command;
}

// A --resample without a number after it gets a word that stands for the rate of --fps, so that it
// takes none that is meant otherwise.
std::vector<std::string> WithResampleRates(std::span<const char* const> arguments) {
    std::vector<std::string> words;
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        words.emplace_back(arguments[index]);
        if (words.back() == "--") {
            words.insert(words.end(), arguments.begin() + static_cast<std::ptrdiff_t>(index) + 1,
                         arguments.end());
            break;
        }
        if (words.back() != "--resample") continue;
        const bool hasNumber = index + 1 < arguments.size() && ParseNumber(arguments[index + 1]);
        words.back() += fmt::format("={}", hasNumber ? arguments[++index] : kRateOfFps);
    }
    return words;
}

// As CLI11 takes them. What looks like "[a,b]", a folder's name maybe, must not be taken for one of
// the lists that it splits.
std::vector<std::string> LastFirst(std::span<const char* const> arguments) {
    std::vector<std::string> words = WithResampleRates(arguments);
    const bool isImport = words.front() == "import";
    std::reverse(words.begin(), words.end());
    if (isImport) return words;
    for (std::string& word : words)
        if (word.starts_with('[') && word.ends_with(']')) word.insert(0, "./");
    return words;
}

}  // namespace

bool IsCommand(std::string_view word) {
    return word == "import" || word == "check" || word == "convert" || word == "command";
}

Request ParseArguments(std::span<const char* const> arguments) {
    constexpr std::string_view kNeither = "neither import, check, convert nor command";
    if (arguments.empty()) throw UsageError(fmt::format("nothing to do: {}", kNeither));
    if (!IsCommand(arguments[0]) && arguments[0][0] != '-')
        throw UsageError(fmt::format("{}: {}", arguments[0], kNeither));
    Words words;
    CLI::App program;
    program.set_help_flag("-h,--help");
    program.set_version_flag("--version", "zkhost " ZKHOST_VERSION);
    program.require_subcommand(1);
    CLI::App* import = program.add_subcommand("import");
    CLI::App* check = program.add_subcommand("check");
    CLI::App* convert = program.add_subcommand("convert");
    CLI::App* command = program.add_subcommand("command");
    DescribeImport(*import, words.import);
    DescribeCheck(*check, words.check);
    DescribeConvert(*convert, words);
    DescribeCommand(*command, words);
    for (CLI::App* each : {import, check, convert, command})
        RefuseValuesOfFlags(*each);

    try {
        program.parse(LastFirst(arguments));
    } catch (const CLI::CallForHelp&) {
        return Answer{std::string(import->parsed()    ? kImportHelp
                                  : check->parsed()   ? kCheckHelp
                                  : convert->parsed() ? kConvertHelp
                                  : command->parsed() ? kCommandHelp
                                                      : kMainHelp)};
    } catch (const CLI::CallForVersion&) {
        return Answer{"zkhost " ZKHOST_VERSION "\n"};
    } catch (const CLI::ParseError& error) {
        throw UsageError(error.what());
    }
    if (import->parsed()) return UnderstandImport(words.import);
    if (check->parsed()) return UnderstandCheck(words.check);
    if (convert->parsed()) return UnderstandConvert(words);
    return UnderstandCommand(words);
}

}  // namespace cli
