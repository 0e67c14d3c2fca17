#include "cli/arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <fmt/format.h>

#include "cli/check_arguments.h"
#include "cli/command_arguments.h"
#include "cli/convert_arguments.h"
#include "cli/help_text.h"
#include "cli/import_arguments.h"

namespace cli {
namespace {

// Makes CLI11 refuse a flag that is given a value, such as "--bones=1".
void DisallowFlagValues(CLI::App& command) {
    for (CLI::Option* option : command.get_options())
        if (option->get_expected_max() == 0) option->disable_flag_override();
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
    ImportWords importWords;
    CheckRequest checkWords;
    ConvertWords convertWords;
    CommandWords commandWords;
    CLI::App program;
    program.set_help_flag("-h,--help");
    program.set_version_flag("--version", "zkhost " ZKHOST_VERSION);
    program.require_subcommand(1);
    CLI::App* import = program.add_subcommand("import");
    CLI::App* check = program.add_subcommand("check");
    CLI::App* convert = program.add_subcommand("convert");
    CLI::App* command = program.add_subcommand("command");
    DescribeImport(*import, importWords);
    DescribeCheck(*check, checkWords);
    DescribeConvert(*convert, convertWords);
    DescribeCommand(*command, commandWords);
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
    if (import->parsed()) return BuildImportRequest(importWords);
    if (check->parsed()) return BuildCheckRequest(checkWords);
    if (convert->parsed()) return BuildConvertRequest(convertWords);
    return BuildCommandRequest(commandWords);
}

}  // namespace cli
