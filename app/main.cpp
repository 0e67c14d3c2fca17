// zkhost: the command-line host.
#include <csignal>
#include <exception>
#include <fcntl.h>
#include <fmt/format.h>
#include <new>
#include <span>
#include <string>

#include "app/arguments.h"
#include "app/check_command.h"
#include "app/convert/convert_command.h"
#include "app/import_command.h"
#include "app/locale_setup.h"
#include "app/outcome.h"
#include "app/plugin_library.h"
#include "app/print.h"
#include "app/raw_command.h"

namespace {

// A closed standard stream would let the next file that is opened take its number, and messages
// would end up in that file.
void OccupyStandardStreams() {
    while (true) {
        const int file = open("/dev/null", O_RDWR);
        if (file > 2) close(file);
        if (file < 0 || file > 2) return;
    }
}

int Run(const app::Request& request, const std::string& program) {
    if (const auto* answer = std::get_if<app::Answer>(&request)) {
        app::ToStdout()(answer->text);
        return 0;
    }
    if (const auto* import = std::get_if<app::ImportRequest>(&request))
        return app::RunImport(*import);
    if (const auto* check = std::get_if<app::CheckRequest>(&request)) return app::RunCheck(*check);
    if (const auto* convert = std::get_if<app::ConvertRequest>(&request))
        return app::RunConvert(*convert, program);
    return app::RunCommand(std::get<app::CommandRequest>(request));
}

int RunArguments(const std::string& program, std::span<const char* const> arguments) {
    try {
        return Run(app::ParseArguments(arguments), program);
    } catch (const app::UsageError& error) {
        const bool named = !arguments.empty() && app::IsCommand(arguments[0]);
        const std::string command = named ? fmt::format(" {}", arguments[0]) : std::string();
        app::PrintError(error.what());
        app::PrintError(fmt::format("'zkhost{} --help' says more", command));
        return app::kWrongUsage;
    } catch (const app::PluginError& error) {
        app::PrintError(error.what());
        return app::kWrongUsage;
    } catch (const std::bad_alloc&) {
        app::PrintError("out of memory");
        return app::kImportFailed;
    } catch (const std::exception& error) {
        app::PrintError(error.what());
        return app::kImportFailed;
    }
}

}  // namespace

int main(int argc, char** argv) {
    OccupyStandardStreams();
    // A file that would grow beyond the limit is then an error like a full disk.
    std::signal(SIGXFSZ, SIG_IGN);
    app::SetCharacterLocale();
    const auto count = static_cast<std::size_t>(argc > 0 ? argc - 1 : 0);
    const int status = RunArguments(argc > 0 ? argv[0] : "zkhost", {argv + 1, count});
    if (!app::FlushStdout()) {
        app::PrintError("cannot write to the standard output");
        if (status == app::kImported) return app::kOutputFailed;
    }
    return status;
}
