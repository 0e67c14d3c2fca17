#include "cli/convert_command.h"

#include <optional>
#include <string>

#include "cli/arguments.h"
#include "cli/convert_show.h"
#include "cli/print.h"
#include "dataset/conversion.h"
#include "dataset/exit_status.h"
#include "dataset/import_starter.h"
#include "dataset/request.h"
#include "take/plugin_library.h"
#include "text/byte_sink.h"
#include "text/shell_words.h"
#include "threads/signals_blocked.h"

namespace cli {
namespace {

// Throws UsageError if no job can be run, after it has printed why.
void RequireJobs(const dataset::Conversion& conversion) {
    if (!conversion.IsEveryJobRefused()) return;
    ConvertShow show(0);
    conversion.Plan([](const auto&) {},
                    [&](const dataset::IndexRow& row) { show.RecordNotConverted(row); });
    throw UsageError("nothing to convert: every file was refused");
}

int Plan(const dataset::Conversion& conversion, const std::string& program) {
    ConvertShow show(0);
    conversion.Plan(
        [&](std::vector<std::string> words) {
            words.insert(words.begin(), program);
            ToStdout()(text::ShellLine(words) + '\n');
        },
        [&](const dataset::IndexRow& row) { show.RecordNotConverted(row); });
    return show.Failures() > 0 ? dataset::kSomeFailed : dataset::kImported;
}

// A thread of the plug-in must not get the signals that say that an import has ended, or that the
// user wants to stop.
take::LoadedPlugin LoadWithoutSignals(const std::string& plugin) {
    const threads::SignalsBlocked blocked;
    return take::LoadPlugin(plugin);
}

int Run(dataset::Conversion& conversion, const dataset::Request& request,
        dataset::ImportStarter* starter) {
    // The plug-in is loaded here only so that a failure is reported once and not by every import.
    const take::LoadedPlugin loaded = LoadWithoutSignals(request.plugin);
    if (!loaded.plugin) throw PluginError(loaded.problem);
    ConvertShow show(conversion.JobCount());
    dataset::Watcher watcher;
    watcher.onConverted = [&](const auto& row, const auto& details) {
        show.RecordConverted(row, details);
    };
    watcher.onNotConverted = [&](const auto& row, const auto& details) {
        show.RecordNotConverted(row, details);
    };
    watcher.onMessage = [&](std::string_view message) { show.PrintMessage(message); };
    const dataset::RunEnd end = conversion.Run(starter, watcher);
    show.PrintProblems(end);
    ToStdout()(show.Summary(end, request.timing));
    if (end.isDiskFull) return dataset::kOutputFailed;
    if (end.isCancelled) return dataset::kCancelled;
    if (!end.problems.empty()) return dataset::kOutputFailed;
    return show.Failures() > 0 ? dataset::kSomeFailed : dataset::kImported;
}

}  // namespace

int RunConvert(const dataset::Request& request, const std::string& program,
               const std::function<int(const std::vector<std::string>&)>& runImport) {
    try {
        std::optional<dataset::ImportStarter> starter;
        if (!request.plan)
            starter.emplace(dataset::ImportCode{
                [&] { static_cast<void>(take::LoadPlugin(request.plugin)); }, runImport});
        dataset::Conversion conversion(request);
        RequireJobs(conversion);
        return request.plan ? Plan(conversion, program) : Run(conversion, request, &*starter);
    } catch (const dataset::RequestError& error) {
        throw UsageError(error.what());
    } catch (const text::WriteError& error) {
        PrintError(error.what());
        return dataset::kOutputFailed;
    }
}

}  // namespace cli
