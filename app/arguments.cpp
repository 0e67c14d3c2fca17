#include "app/arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <fmt/format.h>
#include <map>
#include <set>
#include <utility>

#include "app/help_text.h"
#include "app/output_file.h"

namespace app {
namespace {

constexpr double kCmuLengthMultiplier = 0.056444;  // inches, and the archive's own 0.45, to metres
constexpr double kCmuFramesPerSecond = 120.0;
constexpr double kMostJobs = 1000;
constexpr int kMostDigits = 15;

const std::map<std::string, OutputFormat, std::less<>> kOutputFormats = {
    {".bvh", OutputFormat::Bvh},   {".csv", OutputFormat::Csv},   {".glb", OutputFormat::Glb},
    {".gltf", OutputFormat::Gltf}, {".json", OutputFormat::Json}, {".npz", OutputFormat::Npz},
};

std::string LowerCaseExtension(const std::string& path) {
    // Not std::filesystem's: a file named ".bvh" is one.
    const std::size_t name = path.rfind('/') + 1;  // 0 without a folder
    const std::size_t dot = path.rfind('.');
    if (dot == std::string::npos || dot < name) return {};
    std::string extension = path.substr(dot);
    for (char& character : extension)
        character = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
    return extension;
}

// Options as the user wrote them, before they are made sense of.
struct ImportWords {
    std::optional<std::string> length;
    std::optional<std::string> preset;
    std::optional<std::string> scale;
    std::optional<std::string> up;
    std::optional<std::string> fps;
    std::optional<std::string> digits;
    bool resample = false;
    std::optional<std::string> progress;
    std::vector<std::string> outputs;
    bool nulls = false;
    bool bones = false;
};

struct ConvertWords {
    std::string format;
    std::optional<std::string> parallel;
    std::optional<std::string> timeLimit;
};

double FiniteNumber(const char* option, const std::string& text) {
    const auto number = ParseNumber(text);
    if (!number || !std::isfinite(*number))
        throw UsageError(fmt::format("{} {}: not a number", option, text));
    return *number;
}

double PositiveNumber(const char* option, const std::string& text) {
    const double number = FiniteNumber(option, text);
    if (number <= 0.0) throw UsageError(fmt::format("{} {}: not above zero", option, text));
    return number;
}

template <class Value>
Value Choice(const char* option, const std::string& text,
             std::initializer_list<std::pair<std::string_view, Value>> choices) {
    std::string names;
    for (const auto& [name, value] : choices) {
        if (text == name) return value;
        names += (names.empty() ? "" : " or ") + std::string(name);
    }
    throw UsageError(fmt::format("{} {}: expected {}", option, text, names));
}

Progress ProgressChoice(const std::optional<std::string>& text) {
    if (!text) return Progress::Auto;
    return Choice<Progress>(
        "--progress", *text,
        {{"auto", Progress::Auto}, {"on", Progress::On}, {"off", Progress::Off}});
}

void FindFormat(ImportRequest& request) {
    const std::string extension = LowerCaseExtension(request.file);
    if (extension == ".bvh")
        request.format = SourceFormat::Biovision;
    else if (extension == ".asf")
        request.format = SourceFormat::Acclaim;
    else if (extension == ".amc")
        throw UsageError(
            fmt::format("{}: a motion needs its skeleton, SKEL.asf, before it", request.file));
    else
        throw UsageError(fmt::format("{}: neither a .bvh nor an .asf file", request.file));
    if (request.motionFile.empty()) return;
    if (request.format == SourceFormat::Biovision)
        throw UsageError(fmt::format("{}: a .bvh file is imported alone", request.motionFile));
    if (LowerCaseExtension(request.motionFile) != ".amc")
        throw UsageError(fmt::format("{}: not an .amc file", request.motionFile));
}

// With --resample the rate is that of the samples, and the motion's own is what it was or what the
// preset says.
void TakeRate(const ImportWords& words, ImportRequest& request) {
    if (words.preset) request.framesPerSecond = kCmuFramesPerSecond;
    std::optional<double> rate = request.framesPerSecond;
    if (words.fps) rate = PositiveNumber("--fps", *words.fps);
    if (words.resample && !rate) throw UsageError("--resample needs a rate: --fps N");
    (words.resample ? request.resampleTo : request.framesPerSecond) = rate;
}

int Digits(const std::string& text) {
    const double number = FiniteNumber("--digits", text);
    if (number < 0.0 || number > kMostDigits || number != std::floor(number))
        throw UsageError(fmt::format("--digits {}: expected 0 to {}", text, kMostDigits));
    return static_cast<int>(number);
}

void TakeNumbers(const ImportWords& words, ImportRequest& request) {
    if (words.preset) {
        if (*words.preset != "cmu")
            throw UsageError(fmt::format("--preset {}: expected cmu", *words.preset));
        request.lengthMultiplier = kCmuLengthMultiplier;
    }
    if (words.length) request.lengthMultiplier = FiniteNumber("--length", *words.length);
    TakeRate(words, request);
    if (words.digits) request.digits = Digits(*words.digits);
    if (words.scale) request.scale = PositiveNumber("--scale", *words.scale);
    if (words.up)
        request.up = Choice<UpAxis>("--up", *words.up, {{"y", UpAxis::Y}, {"z", UpAxis::Z}});
    const bool acclaimOnly = request.applyLimits || request.lengthMultiplier;
    if (acclaimOnly && request.format != SourceFormat::Acclaim)
        throw UsageError("--limits, --length and --preset are for Acclaim files");
}

std::string Resolved(const std::string& path) {
    std::error_code unreadable;
    const auto absolute = std::filesystem::absolute(FollowLinks(path), unreadable);
    const auto resolved = std::filesystem::weakly_canonical(absolute, unreadable);
    return unreadable ? path : resolved.string();
}

void RefuseToOverwrite(const std::string& output, const std::string& input) {
    if (!input.empty() && IsSameFile(output, input))
        throw UsageError(fmt::format("{} would be overwritten by an output", input));
}

void TakeOutputs(const ImportWords& words, ImportRequest& request) {
    std::set<std::string> taken;
    for (const std::string& path : words.outputs) {
        const std::string extension = LowerCaseExtension(path);
        const auto format = kOutputFormats.find(extension);
        if (format == kOutputFormats.end()) {
            std::string known;
            for (const auto& [name, value] : kOutputFormats)
                known += ' ' + name;
            throw UsageError(fmt::format("{}: no such output; known are{}", path, known));
        }
        const OutputRequest output = {path, format->second};
        for (const std::string& file : FilesOf(output)) {
            RefuseToOverwrite(file, request.file);
            RefuseToOverwrite(file, request.motionFile);
            if (!taken.insert(Resolved(file)).second)
                throw UsageError(fmt::format("{}: named as an output twice", file));
        }
        request.outputs.push_back(output);
    }
}

// What was asked for on the whole, filled in while CLI11 parses.
struct Words {
    ImportRequest import;
    ImportWords importWords;
    CommandRequest command;
    std::vector<std::string> commandArguments;
    std::optional<std::string> commandProgress;
    ConvertRequest convert;
    ConvertWords convertWords;
    // Of convert: those that each import gets.
    std::vector<const CLI::Option*> passedOn;
    std::vector<const CLI::Option*> passedOnToAcclaim;
    const CLI::Option* resample = nullptr;
};

// What convert takes as well and hands to each of its imports.
void DescribeImportOptions(CLI::App& import, Words& words) {
    ImportRequest& request = words.import;
    CLI::Option* nulls = import.add_flag("--nulls", words.importWords.nulls);
    import.add_flag("--bones", words.importWords.bones)->excludes(nulls);
    import.add_flag("--chain-from-parent,!--no-chain-from-parent", request.chainFromParentJoint);
    import.add_flag("--effector-to-last-bone", request.effectorToLastBone);
    import.add_flag("--group,!--no-group", request.createGroup);
    import.add_flag("--clip", request.addClip);
    words.passedOnToAcclaim = {
        import.add_flag("--limits", request.applyLimits),
        import.add_option("--length", words.importWords.length),
        import.add_option("--preset", words.importWords.preset),
    };
    import.add_option("--scale", words.importWords.scale);
    import.add_option("--up", words.importWords.up);
    import.add_option("--fps", words.importWords.fps);
    words.resample = import.add_flag("--resample", words.importWords.resample);
    import.add_flag("--mesh,!--no-mesh", request.mesh);
    import.add_option("--digits", words.importWords.digits);
}

void DescribeImport(CLI::App& import, Words& words) {
    ImportRequest& request = words.import;
    import.add_option("file", request.file)->required();
    import.add_option("motion", request.motionFile);
    DescribeImportOptions(import, words);
    import.add_option("-o,--output", words.importWords.outputs)->allow_extra_args(false);
    import.add_flag("--make-folders", request.makeFolders);
    import.add_flag("--tree", request.tree);
    import.add_flag("--quiet", request.quiet);
    import.add_flag("--timing", request.timing);
    import.add_option("--progress", words.importWords.progress);
    import.add_option("--plugin", request.plugin);
    import.add_flag("--report", request.report);
}

// "--bones=1" and the like are wrong usage.
void RefuseValuesOfFlags(CLI::App& command) {
    for (CLI::Option* option : command.get_options())
        if (option->get_expected_max() == 0) option->disable_flag_override();
}

void DescribeConvert(CLI::App& convert, Words& words) {
    DescribeImportOptions(convert, words);
    const std::vector<const CLI::Option*>& acclaim = words.passedOnToAcclaim;
    for (const CLI::Option* option : std::as_const(convert).get_options())
        if (std::find(acclaim.begin(), acclaim.end(), option) == acclaim.end())
            words.passedOn.push_back(option);
    ConvertRequest& request = words.convert;
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

ImportRequest UnderstandImport(Words& words) {
    words.import.useNulls = !words.importWords.bones;
    words.import.progress = ProgressChoice(words.importWords.progress);
    if (words.import.report) words.import.quiet = true;
    FindFormat(words.import);
    TakeNumbers(words.importWords, words.import);
    TakeOutputs(words.importWords, words.import);
    return words.import;
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

ConvertRequest UnderstandConvert(Words& words) {
    ConvertRequest& request = words.convert;
    request.extension = '.' + words.convertWords.format;
    if (!kOutputFormats.contains(request.extension))
        throw UsageError(fmt::format("--to {}: no such output", words.convertWords.format));
    if (request.outDir.empty()) throw UsageError("--out-dir: no folder named");
    if (!request.skeleton.empty() && LowerCaseExtension(request.skeleton) != ".asf")
        throw UsageError(fmt::format("--asf {}: not an .asf file", request.skeleton));
    // Wrong values are better said once than by every import.
    words.import.format = SourceFormat::Acclaim;
    TakeNumbers(words.importWords, words.import);
    // At the preset's rate, which others do not have.
    if (!words.importWords.fps && words.importWords.resample) {
        std::erase(words.passedOn, words.resample);
        words.passedOnToAcclaim.push_back(words.resample);
    }
    request.importOptions = AsGiven(words.passedOn);
    request.acclaimOptions = AsGiven(words.passedOnToAcclaim);
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
    static const std::map<std::string, std::size_t, std::less<>> kTexts = {
        {"Biovision Import function", 1}, {"Acclaim Import function", 2}};
    const auto texts = kTexts.find(request.name);
    if (texts == kTexts.end()) return;
    for (std::size_t place = 0; place < request.arguments.size(); ++place) {
        const RawArgument& argument = request.arguments[place];
        const bool isZero = !argument.boolean && argument.word == 0 && argument.real == 0.0 &&
                            !std::signbit(argument.real);
        if (place < texts->second && argument.kind != RawArgument::Kind::Text && !isZero)
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

// As CLI11 takes them. What looks like "[a,b]", a folder's name maybe, must not be taken for one of
// the lists that it splits.
std::vector<std::string> LastFirst(std::span<const char* const> arguments) {
    std::vector<std::string> words(arguments.rbegin(), arguments.rend());
    if (words.back() == "import") return words;
    for (std::string& word : words)
        if (word.starts_with('[') && word.ends_with(']')) word.insert(0, "./");
    return words;
}

}  // namespace

std::vector<std::string> FilesOf(const OutputRequest& output) {
    std::vector<std::string> files = {output.path};
    if (output.format == OutputFormat::Gltf)
        files.push_back(output.path.substr(0, output.path.rfind('.')) + ".bin");
    return files;
}

bool IsCommand(std::string_view word) {
    return word == "import" || word == "convert" || word == "command";
}

Request ParseArguments(std::span<const char* const> arguments) {
    constexpr std::string_view kNeither = "neither import, convert nor command";
    if (arguments.empty()) throw UsageError(fmt::format("nothing to do: {}", kNeither));
    if (!IsCommand(arguments[0]) && arguments[0][0] != '-')
        throw UsageError(fmt::format("{}: {}", arguments[0], kNeither));
    Words words;
    CLI::App program;
    program.set_help_flag("-h,--help");
    program.set_version_flag("--version", "zkhost " ZKHOST_VERSION);
    program.require_subcommand(1);
    CLI::App* import = program.add_subcommand("import");
    CLI::App* convert = program.add_subcommand("convert");
    CLI::App* command = program.add_subcommand("command");
    DescribeImport(*import, words);
    DescribeConvert(*convert, words);
    DescribeCommand(*command, words);
    for (CLI::App* each : {import, convert, command})
        RefuseValuesOfFlags(*each);

    try {
        program.parse(LastFirst(arguments));
    } catch (const CLI::CallForHelp&) {
        return Answer{std::string(import->parsed()    ? kImportHelp
                                  : convert->parsed() ? kConvertHelp
                                  : command->parsed() ? kCommandHelp
                                                      : kMainHelp)};
    } catch (const CLI::CallForVersion&) {
        return Answer{"zkhost " ZKHOST_VERSION "\n"};
    } catch (const CLI::ParseError& error) {
        throw UsageError(error.what());
    }
    if (import->parsed()) return UnderstandImport(words);
    if (convert->parsed()) return UnderstandConvert(words);
    return UnderstandCommand(words);
}

}  // namespace app
