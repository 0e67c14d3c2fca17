#include "cli/print.h"

#include <cstdio>
#include <string>
#include <unistd.h>

#include "text/escapes.h"

namespace cli {

Print ToStdout() {
    return [](std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); };
}

Print ToStderr() {
    return [](std::string_view text) { std::fwrite(text.data(), 1, text.size(), stderr); };
}

void PrintError(std::string_view message) {
    // A message may contain file names, and these may contain control characters.
    const std::string shown =
        isatty(STDERR_FILENO) != 0 ? text::EscapeControls(message) : std::string(message);
    ToStderr()("zkhost: " + shown + "\n");
}

bool FlushStdout() {
    return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

}  // namespace cli
