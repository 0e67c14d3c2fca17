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

// The exit status of a program found on the path; -1 where it cannot be run.
int Run(const char* const* arguments) {
    pid_t child = 0;
    // The interface takes what it does not change as if it might.
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
    // Warnings give status 1 and a locale all the same, so the locale itself is what counts.
    const char* const outer = std::getenv("LOCPATH");
    const std::string remembered = outer != nullptr ? outer : "";
    setenv("LOCPATH", built_->Path().c_str(), 1);
    const bool set = std::setlocale(LC_ALL, kBuiltName) != nullptr && HasComma();
    if (outer != nullptr)
        setenv("LOCPATH", remembered.c_str(), 1);
    else
        unsetenv("LOCPATH");
    if (!set)
        problem_ =
            "localedef made no locale with a decimal comma (its locale sources may be missing)";
    return set;
}

}  // namespace support
