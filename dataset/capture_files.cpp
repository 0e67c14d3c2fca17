#include "dataset/capture_files.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <filesystem>
#include <fmt/format.h>
#include <optional>
#include <strings.h>
#include <sys/stat.h>
#include <unordered_set>

#include "dataset/request.h"
#include "pairing/capture_kind.h"
#include "text/path_text.h"

namespace dataset {
namespace {

// Returns the names in a folder, sorted, without those that begin with a dot. `error` becomes 0 if
// all names were read. If reading failed, `error` becomes the errno of the failure, and names may
// be missing.
std::vector<std::string> NamesIn(const std::string& folder, int& error) {
    std::vector<std::string> names;
    DIR* listing = opendir(folder.empty() ? "." : folder.c_str());
    error = listing ? 0 : errno;
    if (!listing) return names;
    for (errno = 0; const dirent* entry = readdir(listing); errno = 0)
        if (entry->d_name[0] != '.') names.emplace_back(entry->d_name);
    error = errno;
    closedir(listing);
    std::sort(names.begin(), names.end());
    return names;
}

FileId IdOf(const struct stat& status) {
    return {status.st_dev, status.st_ino};
}

class Search {
  public:
    explicit Search(const std::string& outDir) {
        struct stat status {};
        if (stat(outDir.c_str(), &status) == 0) outDir_ = IdOf(status);
    }

    // Adds a path that the user named. If it is a folder, adds the capture files below it.
    void AddNamedPath(const std::string& path) {
        struct stat status {};
        if (stat(path.c_str(), &status) != 0)
            throw RequestError(fmt::format("{}: {}", path, std::strerror(errno)));
        if (S_ISDIR(status.st_mode)) {
            std::string start = path;
            if (start.back() != '/') start += '/';
            pending_.push_back({start, "", IdOf(status)});
            SearchPending();
            return;
        }
        const auto kind = pairing::KindOf(path);
        if (!kind) throw RequestError(fmt::format("{}: not a .bvh, .asf or .amc file", path));
        AddFile(path, std::string(text::NamePart(path)), *kind, status);
    }

    // Searches the folders that symbolic links lead to. They may contain more such links, so the
    // search is repeated until there are none.
    void FollowLinks() {
        while (!links_.empty()) {
            pending_ = std::move(links_);
            links_.clear();
            // The order is descending because SearchPending searches the last element first.
            std::sort(pending_.begin(), pending_.end(),
                      [](const Folder& a, const Folder& b) { return a.path > b.path; });
            SearchPending();
        }
    }

    CaptureTree Finish() {
        const auto byPath = [](const auto& a, const auto& b) { return a.path < b.path; };
        std::sort(tree_.files.begin(), tree_.files.end(), byPath);
        std::sort(tree_.problems.begin(), tree_.problems.end(), byPath);
        return std::move(tree_);
    }

  private:
    struct Folder {
        std::string path;  // with a slash at the end
        // The path of this folder relative to the folder that the user named, with a slash at the
        // end. Empty if this is the folder that the user named.
        std::string relativePath;
        FileId id;
    };

    void SearchPending() {
        while (!pending_.empty()) {
            const Folder folder = std::move(pending_.back());
            pending_.pop_back();
            if (!tree_.folders.insert(folder.id).second) continue;
            int error = 0;
            const std::vector<std::string> names = NamesIn(folder.path, error);
            if (error != 0) tree_.problems.push_back({folder.path, std::strerror(error)});
            // The order is reversed because the last pending folder is searched next.
            for (auto name = names.rbegin(); name != names.rend(); ++name)
                AddEntry(folder, *name);
        }
    }

    void AddEntry(const Folder& folder, const std::string& name) {
        const std::string path = folder.path + name;
        const std::string relativePath = folder.relativePath + name;
        const auto kind = pairing::KindOf(name);
        struct stat status {};
        if (lstat(path.c_str(), &status) != 0) {
            if (kind) tree_.problems.push_back({path, std::strerror(errno)});
            return;
        }
        const bool isLink = S_ISLNK(status.st_mode);
        if (isLink && stat(path.c_str(), &status) != 0) {
            if (kind) tree_.problems.push_back({path, std::strerror(errno)});
            return;
        }
        if (S_ISDIR(status.st_mode)) {
            if (IdOf(status) == outDir_) return;
            (isLink ? links_ : pending_).push_back({path + '/', relativePath + '/', IdOf(status)});
        } else if (kind) {
            AddFile(path, relativePath, *kind, status);
        }
    }

    void AddFile(const std::string& path, const std::string& relativePath,
                 pairing::CaptureKind kind, const struct stat& status) {
        if (!files_.insert(std::filesystem::absolute(path).lexically_normal().string()).second)
            return;
        // Only regular files are read: opening a pipe could block for ever.
        if (S_ISREG(status.st_mode))
            tree_.files.push_back({path, relativePath, kind});
        else
            tree_.problems.push_back({path, "not a regular file"});
    }

    CaptureTree tree_;
    std::optional<FileId> outDir_;  // nullopt if the folder does not exist
    std::vector<Folder> pending_;   // the folders to search; the last element is searched next
    std::vector<Folder> links_;     // symbolic links to folders; FollowLinks searches them
    // The absolute paths of all files that were found. Symbolic links in them are not resolved.
    std::unordered_set<std::string> files_;
};

}  // namespace

CaptureTree FindCaptures(const std::vector<std::string>& paths, const std::string& outDir) {
    Search search(outDir);
    for (const std::string& path : paths)
        search.AddNamedPath(path);
    search.FollowLinks();
    return search.Finish();
}

std::vector<std::string> SkeletonsIn(const std::string& folder) {
    int ignoredError = 0;
    std::vector<std::string> names = NamesIn(folder, ignoredError);
    std::erase_if(names, [&](const std::string& name) {
        struct stat status {};
        return pairing::KindOf(name) != pairing::CaptureKind::Skeleton ||
               stat((folder + name).c_str(), &status) != 0 || !S_ISREG(status.st_mode);
    });
    return names;
}

}  // namespace dataset
