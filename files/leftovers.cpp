#include "files/leftovers.h"

#include <dirent.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "files/output_file.h"

namespace files {
namespace {

// Returns the paths of all temporary files in the folder. The result is empty if the folder cannot
// be listed.
std::vector<std::string> TemporariesIn(const std::string& folder) {
    std::vector<std::string> found;
    DIR* listing = opendir(folder.c_str());
    if (!listing) return found;
    while (const dirent* entry = readdir(listing))
        if (IsTemporaryName(entry->d_name)) found.push_back(folder + '/' + entry->d_name);
    closedir(listing);
    return found;
}

// Whether the path still names the open file. Before this process locked the file, its writer may
// have given it its final name, and another writer may have created a new file with this path.
bool IsStillAt(const std::string& path, int file) {
    struct stat named {};
    struct stat opened {};
    return lstat(path.c_str(), &named) == 0 && fstat(file, &opened) == 0 &&
           named.st_dev == opened.st_dev && named.st_ino == opened.st_ino;
}

// A writer keeps its temporary file locked until the file has its final name or is closed.
// If the file can be locked here, no writer needs it any more.
void RemoveIfAbandoned(const std::string& path) {
    const int file = open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (file < 0) return;
    if (flock(file, LOCK_EX | LOCK_NB) == 0 && IsStillAt(path, file)) unlink(path.c_str());
    close(file);
}

}  // namespace

void RemoveLeftovers(const std::set<std::string>& folders) {
    for (const std::string& folder : folders)
        for (const std::string& path : TemporariesIn(folder))
            RemoveIfAbandoned(path);
}

void RemoveLeftoversOf(pid_t process, const std::string& folder) {
    for (const std::string& name : UsualTemporaryNames(process))
        RemoveIfAbandoned(fmt::format("{}/{}", folder, name));
}

}  // namespace files
