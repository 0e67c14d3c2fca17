#include "cli/view_folder.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fmt/format.h>
#include <stdexcept>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "text/path_text.h"

namespace cli {
namespace {

namespace fs = std::filesystem;

constexpr std::chrono::hours kKept{24};
constexpr std::size_t kLongestName = 60;  // bytes

std::string AbsolutePathIn(const char* variable) {
    const char* const value = std::getenv(variable);
    return value && value[0] == '/' ? value : "";
}

fs::path CacheFolder() {
    const std::string cache = AbsolutePathIn("XDG_CACHE_HOME");
    if (!cache.empty()) return cache;
    const std::string home = AbsolutePathIn("HOME");
    if (home.empty())
        throw std::runtime_error("view: neither XDG_CACHE_HOME nor HOME names a folder");
    return fs::path(home) / ".cache";
}

// Makes a folder for the user alone. Another user's folder, or a link to somewhere else, is
// refused.
void MakePrivateFolder(const std::string& path) {
    struct stat status {};
    const bool isMade = mkdir(path.c_str(), S_IRWXU) == 0 || errno == EEXIST;
    const bool isKnown = isMade && lstat(path.c_str(), &status) == 0;
    if (isKnown && (!S_ISDIR(status.st_mode) || status.st_uid != geteuid()))
        throw std::runtime_error(fmt::format("{}: not a folder of the user", path));
    if (!isKnown || ((status.st_mode & 07777U) != S_IRWXU && chmod(path.c_str(), S_IRWXU) != 0))
        throw std::runtime_error(
            fmt::format("cannot make {}: {}", path, std::generic_category().message(errno)));
}

// A page that cannot be removed is left for the next call.
void RemoveOldPages(const fs::path& folder) {
    std::error_code error;
    const auto now = fs::file_time_type::clock::now();
    for (fs::directory_iterator file(folder, error), end; !error && file != end;
         file.increment(error)) {
        std::error_code ignored;
        // The name of a page that was not finished has more after ".html".
        const bool isPage = file->path().filename().string().find(".html") != std::string::npos;
        const bool isFile = file->symlink_status(ignored).type() == fs::file_type::regular;
        const auto written = file->last_write_time(ignored);
        if (isPage && isFile && !ignored && now - written > kKept)
            fs::remove(file->path(), ignored);
    }
}

// The hash FNV-1a of 32 bits.
std::uint32_t HashOf(std::string_view text) {
    std::uint32_t hash = 2166136261U;
    for (const char character : text)
        hash = (hash ^ static_cast<unsigned char>(character)) * 16777619U;
    return hash;
}

bool IsPlain(char character) {
    const bool isLetter =
        (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
    const bool isDigit = character >= '0' && character <= '9';
    return isLetter || isDigit || character == '.' || character == '_' || character == '-';
}

}  // namespace

std::string PrepareViewFolder() {
    const fs::path parent = CacheFolder() / "zkhost";
    const fs::path folder = parent / "view";
    std::error_code error;
    fs::create_directories(parent, error);
    if (error)
        throw std::runtime_error(
            fmt::format("cannot make {}: {}", parent.string(), error.message()));
    MakePrivateFolder(folder.string());
    RemoveOldPages(folder);
    return folder.string();
}

std::string PageName(const std::string& file, const std::string& key) {
    std::string name(text::NamePart(file));
    name = name.substr(0, std::min(name.find('.', 1), kLongestName));
    for (char& character : name)
        if (!IsPlain(character)) character = '_';
    return fmt::format("{}-{:08x}.html", name, HashOf(key));
}

}  // namespace cli
