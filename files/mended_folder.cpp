#include "files/mended_folder.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fmt/format.h>
#include <sys/statvfs.h>
#include <unistd.h>
#include <vector>

#include "text/byte_sink.h"

namespace files {
namespace {

constexpr char kMemoryFolder[] = "/dev/shm";
// Left free in memory for everybody else.
constexpr std::size_t kSpare = std::size_t{16} << 20;
constexpr std::size_t kMostFiles = 2;

// What a signal handler removes: paths that stay as they are while `count` says that they are
// there.
struct Registered {
    std::array<std::array<char, 4096>, kMostFiles> files{};
    std::array<char, 4096> folder{};
    std::atomic<int> fileCount = 0;
    std::atomic<bool> hasFolder = false;
};
Registered registered;
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<bool>::is_always_lock_free);

// No signal is handled while this lives, so that none comes between making and registering.
class SignalsHeld {
  public:
    SignalsHeld() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_BLOCK, &all, &former_);
    }
    ~SignalsHeld() { pthread_sigmask(SIG_SETMASK, &former_, nullptr); }
    SignalsHeld(const SignalsHeld&) = delete;
    SignalsHeld& operator=(const SignalsHeld&) = delete;

  private:
    sigset_t former_{};
};

std::vector<std::string> Candidates(std::size_t bytes) {
    std::vector<std::string> folders;
    struct statvfs room {};
    if (statvfs(kMemoryFolder, &room) == 0 && bytes + kSpare <= room.f_bavail * room.f_frsize)
        folders.emplace_back(kMemoryFolder);
    const char* temporary = std::getenv("TMPDIR");
    folders.emplace_back(temporary && *temporary != '\0' ? temporary : "/tmp");
    return folders;
}

std::string NameStart(pid_t process) {
    return fmt::format("zkhost-{}-", process);
}

template <std::size_t Size>
void Register(std::array<char, Size>& room, const std::string& path) {
    if (path.size() >= Size) throw text::WriteError(fmt::format("cannot write {}: too long", path));
    std::memcpy(room.data(), path.c_str(), path.size() + 1);
}

void WriteAll(int file, std::string_view text, const std::string& path) {
    while (!text.empty()) {
        const ssize_t written = write(file, text.data(), text.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0)
            throw text::WriteError(fmt::format("cannot write {}: {}", path, std::strerror(errno)));
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

}  // namespace

MendedFolder::MendedFolder(std::size_t bytes) {
    const SignalsHeld held;
    int error = 0;
    for (const std::string& folder : Candidates(bytes)) {
        std::string name = fmt::format("{}/{}XXXXXX", folder, NameStart(getpid()));
        if (mkdtemp(name.data())) {
            folder_ = name;
            break;
        }
        error = errno;
    }
    if (folder_.empty())
        throw text::WriteError(
            fmt::format("cannot make a temporary folder (TMPDIR): {}", std::strerror(error)));
    try {
        Register(registered.folder, folder_);
    } catch (...) {
        rmdir(folder_.c_str());
        throw;
    }
    registered.hasFolder = true;
}

MendedFolder::~MendedFolder() {
    RemoveMendedFolder();
}

std::string MendedFolder::Write(const std::string& baseName, std::string_view text) {
    std::string path = folder_ + '/' + baseName;
    const auto index = static_cast<std::size_t>(registered.fileCount.load());
    if (index >= kMostFiles) throw text::WriteError(fmt::format("cannot write {}: too many", path));
    Register(registered.files[index], path);
    ++registered.fileCount;
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (file < 0)
        throw text::WriteError(fmt::format("cannot write {}: {}", path, std::strerror(errno)));
    try {
        WriteAll(file, text, path);
    } catch (...) {
        close(file);
        throw;
    }
    close(file);
    return path;
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
    for (const std::string& folder : Candidates(0)) {
        std::error_code error;
        std::filesystem::directory_iterator entry(folder, error);
        const std::filesystem::directory_iterator end;
        for (; !error && entry != end; entry.increment(error)) {
            const std::string name = entry->path().filename().string();
            std::error_code ignored;
            if (name.starts_with(NameStart(process)) && !entry->is_symlink(ignored))
                std::filesystem::remove_all(entry->path(), ignored);
        }
    }
}

}  // namespace files
