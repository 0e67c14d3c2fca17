#include "app/raw_command.h"

#include <fmt/format.h>

#include "app/callback_run.h"
#include "app/interrupt.h"
#include "app/outcome.h"
#include "app/outputs.h"
#include "app/plugin_library.h"
#include "app/print.h"
#include "app/user_input_json.h"
#include "app/variant_list.h"
#include "export/json_record.h"
#include "files/write_file.h"
#include "headless/session.h"
#include "text/byte_sink.h"
#include "text/wide_text.h"

namespace app {
namespace {

VariantList Variants(const std::vector<RawArgument>& arguments) {
    VariantList variants;
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

}  // namespace

int RunCommand(const CommandRequest& request) {
    const PluginLibrary plugin(request.plugin);
    const VariantList arguments = Variants(request.arguments);
    CallbackShow show;
    show.progress = request.progress;
    const CallbackResult result =
        RunCallback(plugin, text::DecodeUtf8(request.name), arguments, show);

    const headless::Session& session = headless::Session::Current();
    const Outcome outcome = JudgeImport(result.code, result.log, Interrupted());
    OutputsResult written;
    if (outcome.status != kCancelled && !request.jsonFile.empty())
        AddOutput(
            [&] {
                const auto fill = [&](text::ByteSink& file) {
                    exporters::WriteJsonRecord(
                        file, session.GetScene(),
                        {result.code, result.log, session.Bar(), session.Commands(),
                         UserInputJson(plugin.UserInput())});
                    return std::string();
                };
                return files::WriteFile(request.jsonFile, fill, Interrupted);
            },
            written);
    ReleaseInterrupts();
    ToStdout()(fmt::format("0x{:08X}\n", static_cast<std::uint32_t>(result.code)));
    if (outcome.status == kCancelled || written.interrupted) return kCancelled;
    if (written.failed) return kOutputFailed;
    return result.code == 0 ? 0 : 1;
}

}  // namespace app
