#include "files/links.h"

#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include "text/byte_sink.h"
#include "text/path_text.h"

namespace files {

std::string FollowLinks(std::string path) {
    // The system itself follows at most 40 links.
    for (int links = 0; links < 40; ++links) {
        char target[4096];
        const ssize_t length = readlink(path.c_str(), target, sizeof(target));
        if (length <= 0 || length == static_cast<ssize_t>(sizeof(target))) break;
        const std::string next(target, static_cast<std::size_t>(length));
        path = next.front() == '/' ? std::string() : std::string(text::FolderPart(path));
        path += next;
    }
    return path;
}

void RefuseLink(const std::string& path) {
    struct stat status {};
    if (lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode))
        throw text::WriteError(fmt::format("cannot write {}: a symbolic link", path));
}

bool IsSameFile(const std::string& a, const std::string& b) {
    struct stat first {};
    struct stat second {};
    return stat(a.c_str(), &first) == 0 && stat(b.c_str(), &second) == 0 &&
           first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

}  // namespace files
