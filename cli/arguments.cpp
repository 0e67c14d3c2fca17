#include "cli/arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <map>
#include <set>
#include <utility>

#include "cli/check_files.h"
#include "cli/help_text.h"
#include "cli/import_options.h"
#include "cli/option_values.h"
#include "cli/output_formats.h"
#include "cli/standard_input.h"
#include "dataset/request.h"
#include "export/formats.h"
#include "pairing/capture_kind.h"
#include "take/commands.h"
#include "take/input_text.h"
#include "text/path_text.h"
#include "text/wide_text.h"

namespace cli {
namespace {

constexpr double kMostJobs = 1000;

struct ConvertWords {
    std::vector<std::string> formats;
    std::optional<std::string> parallel;
    std::optional<std::string> timeLimit;
};

// The values of all options and arguments of all commands. CLI11 stores them here while it parses
// the command line.
struct Words {
    ImportWords import;
    CheckRequest check;
    std::optional<std::string> checkAs;
    CommandRequest command;
    std::vector<std::string> commandArguments;
    std::optional<std::string> commandProgress;
    dataset::Request convert;
    ConvertWords convertWords;
    ImportWords convertImport;
    // The options that convert passes on to every import. The options for Acclaim files only are in
    // convertImport.acclaimOptions.
    std::vector<const CLI::Option*> passedOn;
};

// Makes CLI11 refuse a flag that is given a value, such as "--bones=1".
void DisallowFlagValues(CLI::App& command) {
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
    convert.add_option("--to", words.convertWords.formats)->allow_extra_args(false)->required();
    convert.add_option("--out-dir", request.outDir)->required();
    convert.add_option("--asf", request.skeleton);
    convert.add_option("-j,--jobs", words.convertWords.parallel);
    convert.add_option("--time-limit", words.convertWords.timeLimit);
    convert.add_flag("--resume", request.resume);
    convert.add_flag("--plan", request.plan);
    convert.add_flag("--timing", request.timing);
    convert.add_option("--plugin", request.plugin);
}

void DescribeCommand(CLI::App& command, Words& words) {
    command.add_option("name", words.command.name)->required();
    command.add_option("arguments", words.commandArguments);
    command.add_option("--json", words.command.jsonFile);
    command.add_option("--progress", words.commandProgress);
    command.add_option("--plugin", words.command.plugin);
}

// Throws UsageError if an output of --fix would overwrite another output or an input.
void RequireSeparateOutputs(const CheckRequest& request) {
    std::set<std::string> names;
    for (const CheckInput& file : InputsOf(request)) {
        const std::string name = take::PlainName(file.file);
        if (!names.insert(name).second)
            throw UsageError(fmt::format("--out-dir: two files are called {}", name));
        const std::string output =
            request.output.empty() ? request.outDir + '/' + name : request.output;
        for (const std::string& input : request.files)
            RequireNotOverwritten(input, output);
    }
}

void DescribeCheck(CLI::App& check, Words& words) {
    CheckRequest& request = words.check;
    check.add_option("--as", words.checkAs);
    check.add_option("files", request.files)->required();
    check.add_flag("--json", request.json);
    check.add_flag("--strict", request.strict);
    check.add_flag("--fix", request.fix);
    check.add_option("-o,--output", request.output);
    check.add_option("--out-dir", request.outDir);
    check.add_option("--encoding", request.encoding);
}

CheckRequest BuildCheckRequest(Words& words) {
    CheckRequest& request = words.check;
    request.as = ParseAs(words.checkAs, request.files);
    for (const std::string& file : request.files) {
        if (IsStandardInput(file) && !request.as)
            throw UsageError("-: --as bvh, asf or amc must say what the standard input is");
        if (!IsStandardInput(file) && !pairing::KindOf(file))
            throw UsageError(fmt::format("{}: not a .bvh, .asf or .amc file", file));
    }
    RequireKnownEncoding(request.encoding);
    const bool hasOutput = !request.output.empty();
    const bool hasFolder = !request.outDir.empty();
    if (!request.fix && (hasOutput || hasFolder)) throw UsageError("-o and --out-dir need --fix");
    if (!request.fix) return request;
    if (hasOutput == hasFolder)
        throw UsageError("--fix needs either -o OUT, for one file, or --out-dir DIR");
    if (hasOutput && request.files.size() > 1)
        throw UsageError("-o is for one file; use --out-dir DIR for several");
    if (text::IsGzipName(request.output))
        throw UsageError(
            fmt::format("-o {}: --fix writes plain text; leave out .gz", request.output));
    RequireSeparateOutputs(request);
    return request;
}

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

dataset::Request BuildConvertRequest(Words& words) {
    dataset::Request& request = words.convert;
    for (const exporters::Format* format : ParseFormats(words.convertWords.formats))
        request.formats.push_back(
            {std::string(format->extension), std::string(format->sideExtension)});
    if (request.outDir.empty()) throw UsageError("--out-dir: the name of the folder is empty");
    if (!request.skeleton.empty() &&
        pairing::KindOf(request.skeleton) != pairing::CaptureKind::Skeleton)
        throw UsageError(fmt::format("--asf {}: not an .asf file", request.skeleton));
    // The values are parsed here only to check them. A mistake is then reported once and not by
    // every import.
    ImportWords& import = words.convertImport;
    ParseImportOptions(import, true);
    // If --fps is missing and --resample has no number, the rate comes from --preset. Because
    // --preset is for Acclaim files only, --resample is passed on only to imports of Acclaim files
    // in this case.
    if (!import.fps && import.resample == kRateOfFps) {
        std::erase(words.passedOn, import.resampleOption);
        import.acclaimOptions.push_back(import.resampleOption);
    }
    request.importOptions = AsGiven(words.passedOn);
    request.acclaimOptions = AsGiven(import.acclaimOptions);
    if (words.convertWords.parallel) {
        const double count = PositiveNumber("--jobs", *words.convertWords.parallel);
        if (count != std::floor(count) || count > kMostJobs)
            throw UsageError(fmt::format("--jobs {}: expected a whole number from 1 to {}",
                                         *words.convertWords.parallel, kMostJobs));
        request.parallel = static_cast<std::size_t>(count);
    }
    if (words.convertWords.timeLimit) {
        request.timeLimitSeconds = FiniteNumber("--time-limit", *words.convertWords.timeLimit);
        if (request.timeLimitSeconds < 0.0)
            throw UsageError(
                fmt::format("--time-limit {}: expected a number of seconds, or 0 for no limit",
                            *words.convertWords.timeLimit));
    }
    return request;
}

// The plug-in's commands read their first arguments as pointers to texts. Throws UsageError if such
// an argument would be an invalid pointer: if it is `true` or a number that is not 0.
void RequireTexts(const CommandRequest& request) {
    const take::FormatInfo* command = take::FindCommand(text::DecodeUtf8(request.name));
    if (!command) return;
    for (std::size_t index = 0; index < request.arguments.size(); ++index) {
        const RawArgument& argument = request.arguments[index];
        const bool isZero = !argument.boolean && argument.word == 0 && argument.real == 0.0 &&
                            !std::signbit(argument.real);
        if (index < command->textArguments && argument.kind != RawArgument::Kind::Text && !isZero)
            throw UsageError(
                fmt::format("argument {} of {} must be a text (str:...)", index + 1, request.name));
    }
}

CommandRequest BuildCommandRequest(Words& words) {
    words.command.progress = ProgressChoice(words.commandProgress);
    for (const std::string& argument : words.commandArguments) {
        words.command.arguments.push_back(ParseRawArgument(argument));
        if (!words.command.jsonFile.empty())
            RequireNotOverwritten(words.command.arguments.back().text, words.command.jsonFile);
    }
    RequireTexts(words.command);
    return words.command;
}

// CLI11 would read the word after --resample as its value, even if that word is a file name. If the
// word is not a number, this function gives --resample the value kRateOfFps.
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

// Returns the arguments in reverse order, as CLI11 expects them. For a command that takes several
// values, CLI11 would split a word such as "[a,b]", which may be the name of a folder. The function
// puts "./" before such a word to prevent that.
std::vector<std::string> ReversedForParser(std::span<const char* const> arguments) {
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
    constexpr std::string_view kCommands = "expected import, check, convert or command";
    if (arguments.empty()) throw UsageError(fmt::format("no command: {}", kCommands));
    if (!IsCommand(arguments[0]) && arguments[0][0] != '-')
        throw UsageError(fmt::format("{}: unknown command: {}", arguments[0], kCommands));
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
    DescribeCheck(*check, words);
    DescribeConvert(*convert, words);
    DescribeCommand(*command, words);
    for (CLI::App* each : {import, check, convert, command})
        DisallowFlagValues(*each);

    try {
        program.parse(ReversedForParser(arguments));
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
    if (import->parsed()) return BuildImportRequest(words.import);
    if (check->parsed()) return BuildCheckRequest(words);
    if (convert->parsed()) return BuildConvertRequest(words);
    return BuildCommandRequest(words);
}

}  // namespace cli
