#include "cli/raw_command.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <string>
#include <vector>

#include "cli/import_show.h"
#include "cli/interrupt.h"
#include "cli/outputs.h"
#include "cli/print.h"
#include "cli/suggestion.h"
#include "dataset/exit_status.h"
#include "export/json_record.h"
#include "files/write_file.h"
#include "headless/session.h"
#include "host/status.h"
#include "take/callback.h"
#include "take/commands.h"
#include "take/outcome.h"
#include "take/plugin_library.h"
#include "take/session_lock.h"
#include "take/thread_limit.h"
#include "take/user_input_json.h"
#include "take/variant_list.h"
#include "text/byte_sink.h"
#include "text/wide_text.h"

namespace cli {
namespace {

take::VariantList Variants(const std::vector<RawArgument>& arguments) {
    take::VariantList variants;
    for (const RawArgument& argument : arguments) {
        switch (argument.kind) {
            case RawArgument::Kind::Text:
                variants.AddText(text::DecodeUtf8(argument.text));
                break;
            case RawArgument::Kind::Boolean:
                variants.AddBoolean(argument.boolean);
                break;
            case RawArgument::Kind::Word:
                variants.AddWord(argument.word);
                break;
            case RawArgument::Kind::Real:
                variants.AddReal(argument.real);
                break;
        }
    }
    return variants;
}

// Another plug-in may have other commands, so a name is unknown only after the plug-in refused it.
void NoteUnknownCommand(const std::string& name) {
    if (take::FindCommand(text::DecodeUtf8(name))) return;
    std::vector<std::string> known;
    for (const take::FormatInfo& format : take::Formats())
        known.push_back(text::EncodeUtf8(format.command));
    PrintError(fmt::format("{}: the plug-in has no such command; known are '{}'{}", name,
                           fmt::join(known, "' and '"), Suggestion(name, known)));
}

}  // namespace

int RunCommand(const CommandRequest& request) {
    const take::LoadedPlugin loaded = take::LoadPlugin(request.plugin);
    if (!loaded.plugin) throw PluginError(loaded.problem);
    if (request.threads) take::LimitThreads(*request.threads);
    const take::VariantList arguments = Variants(request.arguments);
    ShowOptions options;
    options.progress = request.progress;
    ImportShow show(options);
    show.BeginCall();
    const take::SessionLock lock;
    const take::CallResult called =
        take::Call(lock, *loaded.plugin, text::DecodeUtf8(request.name), arguments,
                   show.HasProgressBar(), show.BuildListener());
    show.EndCall();

    const headless::Recording& recording = called.recording;
    const take::Outcome outcome = take::JudgeImport(called.code, recording.log, Interrupted());
    const bool isCancelled = outcome.status == take::Status::Cancelled;
    OutputsResult written;
    if (!isCancelled && !request.jsonFile.empty())
        AddOutput(
            [&] {
                const auto fill = [&](text::ByteSink& file) {
                    exporters::WriteJsonRecord(
                        file, *recording.scene,
                        {called.code, recording.log, recording.bar, recording.commands,
                         take::UserInputJson(called.userInput)});
                    return std::string();
                };
                return files::WriteFile(request.jsonFile, fill, Interrupted);
            },
            {request.jsonFile}, written);
    RestoreInterrupts();
    if (called.code == Zelk::status::kFail) NoteUnknownCommand(request.name);
    if (written.interrupted) PrintError(CancelledMessage(written.cancelled, {}));
    ToStdout()(fmt::format("0x{:08X}\n", static_cast<std::uint32_t>(called.code)));
    if (isCancelled || written.interrupted) return dataset::kCancelled;
    if (written.failed) return dataset::kOutputFailed;
    return called.code == 0 ? 0 : 1;
}

}  // namespace cli
