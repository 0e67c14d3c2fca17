#include "cli/arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <fmt/format.h>

#include "cli/check_arguments.h"
#include "cli/command_arguments.h"
#include "cli/convert_arguments.h"
#include "cli/help_text.h"
#include "cli/import_arguments.h"
#include "cli/suggestion.h"
#include "cli/view_arguments.h"
#include "pairing/capture_kind.h"

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
        // CLI11 would read the next word as the value, even if it is an option.
        if (words.back().starts_with("--") && words.back().ends_with('='))
            throw UsageError(fmt::format("{}: the value is missing", words.back()));
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

const std::vector<std::string> kCommands = {"import", "view", "check", "convert", "command"};

// Throws UsageError, because `word` is no command.
[[noreturn]] void RefuseCommand(const std::string& word) {
    // A user who forgets the command begins with a file.
    if (pairing::KindOf(word))
        throw UsageError(
            fmt::format("{}: unknown command; did you mean 'zkhost import {}'?", word, word));
    std::string suggestion = Suggestion(word, kCommands);
    if (suggestion.empty()) suggestion = ": expected " + ListOf(kCommands);
    throw UsageError(fmt::format("{}: unknown command{}", word, suggestion));
}

// Returns the options of the command as the user writes them, such as "--bones" and "-o". The
// option that is only for the processes of "zkhost convert" is left out.
std::vector<std::string> OptionsOf(const CLI::App& command) {
    std::vector<std::string> options;
    for (const CLI::Option* option : command.get_options()) {
        for (const std::string& name : option->get_lnames())
            if (name != "report") options.push_back("--" + name);
        for (const std::string& name : option->get_snames())
            options.push_back("-" + name);
    }
    return options;
}

// Throws UsageError if the user gave a word that CLI11 could not assign to anything.
void RefuseUnknownWords(const CLI::App& command) {
    const std::vector<std::string> words = command.remaining();
    for (const std::string& word : words) {
        if (!word.starts_with('-') || word == "--") continue;
        const std::string option = word.substr(0, word.find('='));
        throw UsageError(
            fmt::format("{}: unknown option{}", option, Suggestion(option, OptionsOf(command))));
    }
    for (const std::string& word : words)
        if (word != "--") throw UsageError(fmt::format("{}: one argument too many", word));
}

}  // namespace

bool IsCommand(std::string_view word) {
    return std::find(kCommands.begin(), kCommands.end(), word) != kCommands.end();
}

Request ParseArguments(std::span<const char* const> arguments) {
    if (arguments.empty()) return Answer{kMainHelp};
    if (!IsCommand(arguments[0]) && arguments[0][0] != '-') RefuseCommand(arguments[0]);
    ImportWords importWords;
    CheckWords checkWords;
    ConvertWords convertWords;
    CommandWords commandWords;
    ViewWords viewWords;
    CLI::App program;
    program.set_help_flag("-h,--help");
    program.set_help_all_flag("--help-all");
    program.set_version_flag("--version", "zkhost " ZKHOST_VERSION);
    program.require_subcommand(1);
    CLI::App* import = program.add_subcommand("import");
    CLI::App* check = program.add_subcommand("check");
    CLI::App* convert = program.add_subcommand("convert");
    CLI::App* command = program.add_subcommand("command");
    CLI::App* view = program.add_subcommand("view");
    // CLI11 needs more time to describe all commands than a small file takes to be read. If the
    // first word names a command, the options of the others are not needed.
    const auto isNeeded = [&](const CLI::App* each) {
        return !IsCommand(arguments[0]) || each->get_name() == arguments[0];
    };
    if (isNeeded(import)) DescribeImport(*import, importWords);
    if (isNeeded(check)) DescribeCheck(*check, checkWords);
    if (isNeeded(convert)) DescribeConvert(*convert, convertWords);
    if (isNeeded(command)) DescribeCommand(*command, commandWords);
    if (isNeeded(view)) DescribeView(*view, viewWords);
    for (CLI::App* each : {import, view, check, convert, command})
        DisallowFlagValues(*each);

    const auto helpText = [&]() -> const std::string& {
        return import->parsed()    ? kImportHelp
               : check->parsed()   ? kCheckHelp
               : convert->parsed() ? kConvertHelp
               : command->parsed() ? kCommandHelp
               : view->parsed()    ? kViewHelp
                                   : kMainHelp;
    };
    try {
        program.parse(ReversedForParser(arguments));
    } catch (const CLI::CallForHelp&) {
        return Answer{helpText()};
    } catch (const CLI::CallForAllHelp&) {
        return Answer{import->parsed() ? kImportAllHelp : helpText()};
    } catch (const CLI::CallForVersion&) {
        return Answer{"zkhost " ZKHOST_VERSION "\n"};
    } catch (const CLI::ParseError& error) {
        // An unknown word may be the reason why CLI11 misses another one.
        RefuseUnknownWords(program);
        for (const CLI::App* each : program.get_subcommands())
            RefuseUnknownWords(*each);
        throw UsageError(error.what());
    }
    if (import->parsed()) return BuildImportRequest(importWords);
    if (check->parsed()) return BuildCheckRequest(checkWords);
    if (convert->parsed()) return BuildConvertRequest(convertWords);
    if (view->parsed()) return BuildViewRequest(viewWords);
    return BuildCommandRequest(commandWords);
}

}  // namespace cli
