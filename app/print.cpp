#include "app/print.h"

#include <cstdio>
#include <string>

namespace app {

Print ToStdout() {
    return [](std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); };
}

Print ToStderr() {
    return [](std::string_view text) { std::fwrite(text.data(), 1, text.size(), stderr); };
}

void PrintError(std::string_view message) {
    ToStderr()("zkhost: " + std::string(message) + "\n");
}

bool FlushStdout() {
    return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

}  // namespace app
