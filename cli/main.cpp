// zkhost: the command-line host.
#include <csignal>
#include <cstddef>
#include <fcntl.h>
#include <unistd.h>

#include "cli/locale_setup.h"
#include "cli/run_arguments.h"
#include "cli/shown_arguments.h"

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

}  // namespace

int main(int argc, char** argv) {
    OccupyStandardStreams();
    // With SIGXFSZ ignored, a write beyond the file size limit fails with an error. Otherwise the
    // signal would end the process.
    std::signal(SIGXFSZ, SIG_IGN);
    cli::SetCharacterLocale();
    cli::RememberArguments(argc, argv);
    const auto count = static_cast<std::size_t>(argc > 0 ? argc - 1 : 0);
    return cli::RunArguments(argc > 0 ? argv[0] : "zkhost", {argv + 1, count});
}
