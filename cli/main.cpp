// zkhost: the command-line host.
#include <csignal>
#include <exception>
#include <fcntl.h>
#include <fmt/format.h>
#include <new>
#include <span>
#include <string>

#include "cli/arguments.h"
#include "cli/check_command.h"
#include "cli/convert_command.h"
#include "cli/import_command.h"
#include "cli/locale_setup.h"
#include "cli/print.h"
#include "cli/raw_command.h"
#include "cli/view_command.h"
#include "dataset/exit_status.h"
#include "dataset/request.h"

namespace {

// If the program was started with a standard stream closed, the next file that it opens would get
// that stream's descriptor, and messages would be written into the file. This function opens
// /dev/null until the descriptors 0 to 2 are all in use.
void OccupyStandardStreams() {
    while (true) {
        const int file = open("/dev/null", O_RDWR);
        if (file > 2) close(file);
        if (file < 0 || file > 2) return;
    }
}

int Run(const cli::Request& request, const std::string& program) {
    if (const auto* answer = std::get_if<cli::Answer>(&request)) {
        cli::ToStdout()(answer->text);
        return 0;
    }
    if (const auto* import = std::get_if<cli::ImportRequest>(&request))
        return cli::RunImport(*import);
    if (const auto* view = std::get_if<cli::ViewRequest>(&request)) return cli::RunView(*view);
    if (const auto* check = std::get_if<cli::CheckRequest>(&request)) return cli::RunCheck(*check);
    if (const auto* convert = std::get_if<dataset::Request>(&request))
        return cli::RunConvert(*convert, program);
    return cli::RunCommand(std::get<cli::CommandRequest>(request));
}

int RunArguments(const std::string& program, std::span<const char* const> arguments) {
    try {
        return Run(cli::ParseArguments(arguments), program);
    } catch (const cli::UsageError& error) {
        const bool named = !arguments.empty() && cli::IsCommand(arguments[0]);
        const std::string command = named ? fmt::format(" {}", arguments[0]) : std::string();
        cli::PrintError(error.what());
        cli::PrintError(fmt::format("see 'zkhost{} --help'", command));
        return dataset::kWrongUsage;
    } catch (const cli::PluginError& error) {
        cli::PrintError(error.what());
        return dataset::kWrongUsage;
    } catch (const std::bad_alloc&) {
        cli::PrintError("out of memory");
        return dataset::kImportFailed;
    } catch (const std::exception& error) {
        cli::PrintError(error.what());
        return dataset::kImportFailed;
    }
}

}  // namespace

int main(int argc, char** argv) {
    OccupyStandardStreams();
    // With SIGXFSZ ignored, a write beyond the file size limit fails with an error. Otherwise the
    // signal would end the process.
    std::signal(SIGXFSZ, SIG_IGN);
    cli::SetCharacterLocale();
    const auto count = static_cast<std::size_t>(argc > 0 ? argc - 1 : 0);
    const int status = RunArguments(argc > 0 ? argv[0] : "zkhost", {argv + 1, count});
    if (!cli::FlushStdout()) {
        cli::PrintError("cannot write to the standard output");
        if (status == dataset::kImported) return dataset::kOutputFailed;
    }
    return status;
}
