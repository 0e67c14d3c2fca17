#include "cli/command_arguments.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <fmt/format.h>

#include "cli/option_values.h"
#include "take/commands.h"
#include "text/wide_text.h"

namespace cli {
namespace {

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

}  // namespace

void DescribeCommand(CLI::App& command, CommandWords& words) {
    command.add_option("name", words.request.name)->required();
    command.add_option("arguments", words.arguments);
    command.add_option("--json", words.request.jsonFile);
    command.add_option("--progress", words.progress);
    command.add_option("--threads", words.threads);
    command.add_option("--plugin", words.request.plugin);
}

CommandRequest BuildCommandRequest(CommandWords& words) {
    words.request.progress = ProgressChoice(words.progress);
    words.request.threads = ThreadCount(words.threads);
    if (!words.request.jsonFile.empty()) RequireFileName("--json", words.request.jsonFile);
    for (const std::string& argument : words.arguments) {
        words.request.arguments.push_back(ParseRawArgument(argument));
        if (!words.request.jsonFile.empty())
            RequireNotOverwritten(words.request.arguments.back().text, words.request.jsonFile);
    }
    RequireTexts(words.request);
    return words.request;
}

}  // namespace cli
