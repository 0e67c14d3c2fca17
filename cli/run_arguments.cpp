#include "cli/run_arguments.h"

#include <exception>
#include <fmt/format.h>
#include <new>
#include <variant>
#include <vector>

#include "cli/arguments.h"
#include "cli/check_command.h"
#include "cli/convert_command.h"
#include "cli/import_command.h"
#include "cli/print.h"
#include "cli/raw_command.h"
#include "cli/shown_arguments.h"
#include "cli/view_command.h"
#include "dataset/exit_status.h"
#include "dataset/request.h"

namespace cli {
namespace {

// Runs an import of "zkhost convert" in the import's own process.
int RunImportInChild(const std::vector<std::string>& arguments) {
    ShowArguments(arguments);
    std::vector<const char*> words;
    words.reserve(arguments.size());
    for (const std::string& argument : arguments)
        words.push_back(argument.c_str());
    return RunArguments("zkhost", words);
}

int Run(const Request& request, const std::string& program) {
    if (const auto* answer = std::get_if<Answer>(&request)) {
        ToStdout()(answer->text);
        return 0;
    }
    if (const auto* import = std::get_if<ImportRequest>(&request)) return RunImport(*import);
    if (const auto* view = std::get_if<ViewRequest>(&request)) return RunView(*view);
    if (const auto* check = std::get_if<CheckRequest>(&request)) return RunCheck(*check);
    if (const auto* convert = std::get_if<dataset::Request>(&request))
        return RunConvert(*convert, program, RunImportInChild);
    return RunCommand(std::get<CommandRequest>(request));
}

int RunAndReport(const std::string& program, std::span<const char* const> arguments) {
    try {
        return Run(ParseArguments(arguments), program);
    } catch (const UsageError& error) {
        const bool named = !arguments.empty() && IsCommand(arguments[0]);
        const std::string command = named ? fmt::format(" {}", arguments[0]) : std::string();
        PrintError(error.what());
        PrintError(fmt::format("see 'zkhost{} --help'", command));
        return dataset::kWrongUsage;
    } catch (const PluginError& error) {
        PrintError(error.what());
        return dataset::kWrongUsage;
    } catch (const std::bad_alloc&) {
        PrintError("out of memory");
        return dataset::kImportFailed;
    } catch (const std::exception& error) {
        PrintError(error.what());
        return dataset::kImportFailed;
    }
}

}  // namespace

int RunArguments(const std::string& program, std::span<const char* const> arguments) {
    const int status = RunAndReport(program, arguments);
    if (!FlushStdout()) {
        PrintError("cannot write to the standard output");
        if (status == dataset::kImported) return dataset::kOutputFailed;
    }
    return status;
}

}  // namespace cli
