#include "app/mended_folder.h"

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

#include "app/output_file.h"

namespace app {
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

// Signals that end a process of themselves, crashes and others.
constexpr std::array kFatalSignals = {SIGSEGV, SIGBUS,  SIGFPE,  SIGILL,  SIGABRT,
                                      SIGSYS,  SIGQUIT, SIGPIPE, SIGALRM, SIGTERM,
                                      SIGHUP,  SIGINT,  SIGXCPU, SIGUSR1, SIGUSR2};
std::array<struct sigaction, kFatalSignals.size()> formerActions;

// A stack of its own, since a crash may be for lack of one.
std::array<char, 65536> handlerStack;

bool EndsTheProcess(const struct sigaction& action) {
    return (action.sa_flags & SA_SIGINFO) == 0 && action.sa_handler == SIG_DFL;
}

bool IsCrash(int signal) {
    return signal == SIGSEGV || signal == SIGBUS || signal == SIGFPE || signal == SIGILL ||
           signal == SIGABRT || signal == SIGSYS;
}

// Puts back what was there before: a crash then happens once more, another signal is sent again.
extern "C" void OnFatalSignal(int signal) {
    RemoveMendedFolder();
    for (std::size_t index = 0; index < kFatalSignals.size(); ++index)
        if (kFatalSignals[index] == signal) sigaction(signal, &formerActions[index], nullptr);
    if (!IsCrash(signal) || signal == SIGABRT) raise(signal);
}

void WatchSignals() {
    stack_t stack{};
    if (sigaltstack(nullptr, &stack) == 0 && (stack.ss_flags & SS_DISABLE) != 0) {
        stack = {};
        stack.ss_sp = handlerStack.data();
        stack.ss_size = handlerStack.size();
        sigaltstack(&stack, nullptr);
    }
    struct sigaction action {};
    action.sa_handler = OnFatalSignal;
    action.sa_flags = SA_ONSTACK;
    for (std::size_t index = 0; index < kFatalSignals.size(); ++index) {
        sigaction(kFatalSignals[index], nullptr, &formerActions[index]);
        // A signal that somebody handles or ignores keeps that handling. Crashes are watched all
        // the same, and their former handler is put back once the folder is removed.
        if (EndsTheProcess(formerActions[index]) || IsCrash(kFatalSignals[index]))
            sigaction(kFatalSignals[index], &action, nullptr);
    }
}

void StopWatchingSignals() {
    for (std::size_t index = 0; index < kFatalSignals.size(); ++index) {
        struct sigaction now {};
        sigaction(kFatalSignals[index], nullptr, &now);
        if ((now.sa_flags & SA_SIGINFO) == 0 && now.sa_handler == OnFatalSignal)
            sigaction(kFatalSignals[index], &formerActions[index], nullptr);
    }
}

// No signal is handled while this lives, so that none comes between making and registering.
class SignalsHeld {
  public:
    SignalsHeld() {
        sigset_t all;
        sigfillset(&all);
        sigprocmask(SIG_BLOCK, &all, &former_);
    }
    ~SignalsHeld() { sigprocmask(SIG_SETMASK, &former_, nullptr); }
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
    if (path.size() >= Size) throw OutputError(fmt::format("cannot write {}: too long", path));
    std::memcpy(room.data(), path.c_str(), path.size() + 1);
}

void WriteAll(int file, std::string_view text, const std::string& path) {
    while (!text.empty()) {
        const ssize_t written = write(file, text.data(), text.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0)
            throw OutputError(fmt::format("cannot write {}: {}", path, std::strerror(errno)));
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
        throw OutputError(
            fmt::format("cannot make a temporary folder (TMPDIR): {}", std::strerror(error)));
    try {
        Register(registered.folder, folder_);
    } catch (...) {
        rmdir(folder_.c_str());
        throw;
    }
    registered.hasFolder = true;
    WatchSignals();
}

MendedFolder::~MendedFolder() {
    RemoveMendedFolder();
    StopWatchingSignals();
}

std::string MendedFolder::Write(const std::string& baseName, std::string_view text) {
    std::string path = folder_ + '/' + baseName;
    const auto index = static_cast<std::size_t>(registered.fileCount.load());
    if (index >= kMostFiles) throw OutputError(fmt::format("cannot write {}: too many", path));
    Register(registered.files[index], path);
    ++registered.fileCount;
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (file < 0) throw OutputError(fmt::format("cannot write {}: {}", path, std::strerror(errno)));
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

}  // namespace app
