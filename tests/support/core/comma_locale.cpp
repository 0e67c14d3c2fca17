#include "tests/support/core/comma_locale.h"

#include <clocale>
#include <cstdlib>
#include <cstring>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace support {

namespace {

constexpr const char* kBuiltName = "de_DE.UTF-8";

bool HasComma() {
    return std::strcmp(std::localeconv()->decimal_point, ",") == 0;
}

// Runs a program of the search path. Returns its exit status, or -1 if it cannot be run.
int Run(const char* const* arguments) {
    pid_t child = 0;
    // posix_spawnp takes pointers to non-const, but does not change the arguments.
    const int error = posix_spawnp(&child, arguments[0], nullptr, nullptr,
                                   const_cast<char* const*>(arguments), environ);
    if (error != 0) return -1;
    int status = 0;
    if (waitpid(child, &status, 0) != child || !WIFEXITED(status)) return -1;
    return WEXITSTATUS(status);
}

}  // namespace

CommaLocale::CommaLocale() : before_(std::setlocale(LC_ALL, nullptr)) {
    if (!TryInstalled()) TryBuilt();
}

CommaLocale::~CommaLocale() {
    std::setlocale(LC_ALL, before_.c_str());
}

bool CommaLocale::TryInstalled() {
    for (const char* name : {kBuiltName, "de_DE.utf8", "fr_FR.UTF-8", "es_ES.UTF-8", "pl_PL.UTF-8"})
        if (std::setlocale(LC_ALL, name) != nullptr && HasComma()) return true;
    return false;
}

bool CommaLocale::TryBuilt() {
    built_.emplace();
    const std::string target = built_->Path(kBuiltName);
    const char* const command[] = {"localedef", "-c",    "-i",           "de_DE",
                                   "-f",        "UTF-8", target.c_str(), nullptr};
    const int status = Run(command);
    if (status < 0) {
        problem_ = "no locale with a decimal comma is installed and localedef cannot be run";
        return false;
    }
    // With warnings localedef returns 1 and still makes the locale, so only the locale is checked.
    const char* const oldPath = std::getenv("LOCPATH");
    const std::string oldPathCopy = oldPath != nullptr ? oldPath : "";
    setenv("LOCPATH", built_->Path().c_str(), 1);
    const bool set = std::setlocale(LC_ALL, kBuiltName) != nullptr && HasComma();
    if (oldPath != nullptr)
        setenv("LOCPATH", oldPathCopy.c_str(), 1);
    else
        unsetenv("LOCPATH");
    if (!set)
        problem_ =
            "localedef made no locale with a decimal comma (its locale sources may be missing)";
    return set;
}

}  // namespace support
