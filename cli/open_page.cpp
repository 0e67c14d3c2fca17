#include "cli/open_page.h"

#include <cerrno>
#include <fcntl.h>
#include <spawn.h>
#include <system_error>
#include <unistd.h>

namespace cli {

std::string OpenPage(const std::string& path) {
    posix_spawnattr_t attributes;
    posix_spawn_file_actions_t actions;
    posix_spawnattr_init(&attributes);
    posix_spawn_file_actions_init(&actions);
    // In a session of its own, the browser survives when the terminal is closed. It gets none of
    // this process's files: a reader of its output would wait until the browser ends.
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    std::string program = "xdg-open";
    std::string argument = path;
    char* const arguments[] = {program.data(), argument.data(), nullptr};
    pid_t child = 0;
    const int error =
        posix_spawnp(&child, program.c_str(), &actions, &attributes, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
    if (error == 0) return {};
    if (error == ENOENT) return "xdg-open is not installed";
    return "xdg-open: " + std::generic_category().message(error);
}

}  // namespace cli
