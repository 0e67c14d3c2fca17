#include "dataset/import_process.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace dataset {
namespace {

constexpr char kThisProgram[] = "/proc/self/exe";
constexpr std::size_t kKeptBytes = std::size_t{1} << 18;  // how much of each output stream is kept

struct Pipe {
    int read = -1;
    int write = -1;

    Pipe() {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0) throw std::system_error(errno, std::generic_category());
        read = ends[0];
        write = ends[1];
        fcntl(read, F_SETFL, O_NONBLOCK);
    }
    ~Pipe() {
        if (read >= 0) close(read);
        if (write >= 0) close(write);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    int ReleaseReadEnd() { return std::exchange(read, -1); }
};

// Runs in the child between fork and exec, where only async-signal-safe functions may be called.
[[noreturn]] void BecomeImport(char* const* arguments, int output, int errors, pid_t parent) {
    SetUpImport(output, errors, parent);
    execv(kThisProgram, arguments);
    constexpr char kMessage[] = "zkhost: cannot run /proc/self/exe\n";
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, kMessage, sizeof(kMessage) - 1);
    _exit(kCannotRun);
}

// Starts this program anew. Throws std::system_error.
pid_t StartProgram(const std::vector<std::string>& arguments, int output, int errors) {
    std::vector<std::string> words = {"zkhost"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    const pid_t parent = getpid();
    const pid_t id = fork();
    if (id < 0) throw std::system_error(errno, std::generic_category());
    if (id == 0) BecomeImport(pointers.data(), output, errors, parent);
    return id;
}

}  // namespace

ImportProcess::ImportProcess(const std::vector<std::string>& arguments, ImportStarter* starter) {
    Pipe output;
    Pipe errors;
    if (starter && starter->CanStart()) id_ = starter->Start(arguments, output.write, errors.write);
    if (id_ < 0) id_ = StartProgram(arguments, output.write, errors.write);
    output_.file = output.ReleaseReadEnd();
    errors_.file = errors.ReleaseReadEnd();
}

ImportProcess::~ImportProcess() {
    if (!ended_) {
        Kill();
        while (waitpid(id_, &waitStatus_, 0) < 0 && errno == EINTR) {
        }
    }
    CloseFiles();
}

void ImportProcess::Read() {
    output_.Read();
    errors_.Read();
}

void ImportProcess::CloseFiles() {
    output_.Close();
    errors_.Close();
}

bool ImportProcess::Reap() {
    if (ended_) return true;
    if (waitpid(id_, &waitStatus_, WNOHANG) != id_) return false;
    ended_ = true;
    Read();
    CloseFiles();
    return true;
}

void ImportProcess::Interrupt() const {
    if (!ended_) kill(id_, SIGINT);
}

void ImportProcess::Kill() const {
    if (!ended_) kill(id_, SIGKILL);
}

void ImportProcess::Stream::Read() {
    char bytes[4096];
    while (file >= 0) {
        const ssize_t count = read(file, bytes, sizeof(bytes));
        if (count > 0) {
            const std::size_t left = kKeptBytes - text.size();
            text.append(bytes, std::min(left, static_cast<std::size_t>(count)));
        } else if (count < 0 && errno == EINTR) {
            continue;
        } else {
            const bool isEmpty = count < 0 && errno == EAGAIN;
            if (!isEmpty) Close();
            return;
        }
    }
}

void ImportProcess::Stream::Close() {
    if (file >= 0) close(file);
    file = -1;
}

}  // namespace dataset
