#include "files/mended_folder.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fmt/format.h>
#include <string_view>
#include <sys/statvfs.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "text/byte_sink.h"
#include "threads/signals_blocked.h"

namespace files {
namespace {

constexpr char kMemoryFolder[] = "/dev/shm";
// The number of bytes in kMemoryFolder that must stay free for other programs.
constexpr std::size_t kSpareBytes = std::size_t{16} << 20;
constexpr std::size_t kMostFiles = 2;

// The paths that a signal handler removes: the first `fileCount` paths in `files`, and `folder` if
// `hasFolder` is set. A path is stored first, and `fileCount` or `hasFolder` is changed after that.
// The handler may therefore run at any time.
struct Registered {
    std::array<std::array<char, 4096>, kMostFiles> files{};
    std::array<char, 4096> folder{};
    std::atomic<int> fileCount = 0;
    std::atomic<bool> hasFolder = false;
};
Registered registered;
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<bool>::is_always_lock_free);

// Returns the folder that TMPDIR names, or /tmp if TMPDIR is not set.
std::string FolderOnDisk() {
    const char* const folder = std::getenv("TMPDIR");
    return folder != nullptr && *folder != '\0' ? folder : "/tmp";
}

// Returns the folders in which to try to create a temporary folder for `bytes` bytes, the best one
// first. The folder in memory is one of them only if it has enough space.
std::vector<std::string> ParentFolders(std::uint64_t bytes) {
    std::vector<std::string> folders;
    struct statvfs space {};
    if (statvfs(kMemoryFolder, &space) == 0 &&
        bytes + kSpareBytes <= space.f_bavail * space.f_frsize)
        folders.emplace_back(kMemoryFolder);
    folders.push_back(FolderOnDisk());
    return folders;
}

// Returns the beginning of the names of all temporary folders that the process creates.
std::string NamePrefix(pid_t process) {
    return fmt::format("zkhost-{}-", process);
}

// Copies the path, with its NUL byte, for the signal handler. Throws text::WriteError if it is too
// long.
template <std::size_t Size>
void CopyPath(const std::string& path, std::array<char, Size>& copy) {
    if (path.size() >= Size)
        throw text::WriteError(fmt::format("cannot write {}: the path is too long", path));
    std::memcpy(copy.data(), path.c_str(), path.size() + 1);
}

// A file that only this user may read.
class MendedFile final : public text::TemporaryFile {
  public:
    explicit MendedFile(std::string path)
        : path_(std::move(path)),
          file_(open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600)) {
        if (file_ < 0) Fail();
    }
    ~MendedFile() override {
        if (file_ >= 0) close(file_);
    }

    void Write(std::string_view bytes) override {
        while (!bytes.empty()) {
            const ssize_t written = write(file_, bytes.data(), bytes.size());
            if (written < 0 && errno == EINTR) continue;
            if (written <= 0) Fail();
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
    }
    // Some file systems say only now that bytes could not be stored.
    void Close() override {
        if (close(std::exchange(file_, -1)) != 0) Fail();
    }
    const std::string& Path() const override { return path_; }

  private:
    [[noreturn]] void Fail() const {
        throw text::WriteError(fmt::format("cannot write {}: {}", path_, std::strerror(errno)));
    }

    std::string path_;
    int file_;  // -1 if it is closed
};

}  // namespace

MendedFolder::MendedFolder(std::uint64_t bytes) {
    // No signal is handled between the creation of the folder and its registration.
    const threads::SignalsBlocked blocked;
    int error = 0;
    for (const std::string& folder : ParentFolders(bytes)) {
        std::string name = fmt::format("{}/{}XXXXXX", folder, NamePrefix(getpid()));
        if (mkdtemp(name.data())) {
            folder_ = name;
            break;
        }
        error = errno;
    }
    if (folder_.empty())
        throw text::WriteError(fmt::format(
            "cannot create a temporary folder in {}: {}; TMPDIR can name another folder",
            FolderOnDisk(), std::strerror(error)));
    try {
        CopyPath(folder_, registered.folder);
    } catch (...) {
        rmdir(folder_.c_str());
        throw;
    }
    registered.hasFolder = true;
}

MendedFolder::~MendedFolder() {
    RemoveMendedFolder();
}

std::unique_ptr<text::TemporaryFile> MendedFolder::Create(const std::string& baseName) {
    std::string path = folder_ + '/' + baseName;
    const auto index = static_cast<std::size_t>(registered.fileCount.load());
    if (index >= kMostFiles)
        throw text::WriteError(fmt::format("cannot write {}: too many files", path));
    CopyPath(path, registered.files[index]);
    ++registered.fileCount;
    return std::make_unique<MendedFile>(std::move(path));
}

void RemoveMendedFolder() noexcept {
    const int former = errno;
    for (int index = 0; index < registered.fileCount; ++index)
        unlink(registered.files[static_cast<std::size_t>(index)].data());
    registered.fileCount = 0;
    if (registered.hasFolder) rmdir(registered.folder.data());
    registered.hasFolder = false;
    errno = former;
}

void RemoveMendedFolders(pid_t process) {
    // The process may have used either folder. ParentFolders is not called, because it leaves out
    // the folder in memory if that has not enough space now.
    for (const std::string& folder : {std::string(kMemoryFolder), FolderOnDisk()}) {
        std::error_code error;
        std::filesystem::directory_iterator entry(folder, error);
        const std::filesystem::directory_iterator end;
        for (; !error && entry != end; entry.increment(error)) {
            const std::string name = entry->path().filename().string();
            std::error_code ignored;
            if (name.starts_with(NamePrefix(process)) && !entry->is_symlink(ignored))
                std::filesystem::remove_all(entry->path(), ignored);
        }
    }
}

}  // namespace files
