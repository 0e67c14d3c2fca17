#include "dataset/import_starter.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <iterator>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace dataset {
namespace {

// The longest request, in bytes. For a longer command line, ImportStarter::Start fails.
constexpr std::size_t kLongestRequest = std::size_t{1} << 16;
constexpr std::size_t kFileCount = 2;  // how many files come with a request

// Memory for the control message that carries the files of a request.
struct alignas(cmsghdr) Control {
    std::array<char, CMSG_SPACE(kFileCount * sizeof(int))> bytes{};
};

msghdr MessageOf(iovec& text, Control& control) {
    msghdr message{};
    message.msg_iov = &text;
    message.msg_iovlen = 1;
    message.msg_control = control.bytes.data();
    message.msg_controllen = control.bytes.size();
    return message;
}

// Calls a function of the system again as long as a signal interrupts it. Otherwise a child whose
// number is on its way would be forgotten.
template <class Call>
ssize_t Uninterrupted(const Call& call) {
    ssize_t result = 0;
    do {
        result = call();
    } while (result < 0 && errno == EINTR);
    return result;
}

// Sends the arguments, each with a NUL byte at its end, and the files.
bool SendRequest(int socket, const std::vector<std::string>& arguments,
                 const std::array<int, kFileCount>& files) {
    std::string text;
    for (const std::string& argument : arguments)
        text.append(argument.c_str(), argument.size() + 1);
    if (text.size() > kLongestRequest) return false;
    iovec part{text.data(), text.size()};
    Control control;
    msghdr message = MessageOf(part, control);
    cmsghdr* const header = CMSG_FIRSTHDR(&message);
    header->cmsg_level = SOL_SOCKET;
    header->cmsg_type = SCM_RIGHTS;
    header->cmsg_len = CMSG_LEN(sizeof(files));
    std::memcpy(CMSG_DATA(header), files.data(), sizeof(files));
    return Uninterrupted([&] { return sendmsg(socket, &message, MSG_NOSIGNAL); }) ==
           static_cast<ssize_t>(text.size());
}

struct StartRequest {
    std::vector<std::string> arguments;
    std::array<int, kFileCount> files{-1, -1};
};

// Returns false at the end of the requests.
bool ReceiveRequest(int socket, StartRequest& request) {
    std::string text(kLongestRequest, '\0');
    iovec part{text.data(), text.size()};
    Control control;
    msghdr message = MessageOf(part, control);
    const ssize_t size = Uninterrupted([&] { return recvmsg(socket, &message, MSG_CMSG_CLOEXEC); });
    const cmsghdr* const header = CMSG_FIRSTHDR(&message);
    if (size <= 0 || !header || header->cmsg_len != CMSG_LEN(sizeof(request.files))) return false;
    std::memcpy(request.files.data(), CMSG_DATA(header), sizeof(request.files));
    request.arguments.clear();
    std::string_view rest(text.data(), static_cast<std::size_t>(size));
    while (!rest.empty()) {
        request.arguments.emplace_back(rest.substr(0, rest.find('\0')));
        rest.remove_prefix(request.arguments.back().size() + 1);
    }
    return true;
}

// Whether this process has only one thread. A copy of a process has only the thread that made it,
// and a lock that another thread held would stay locked in the copy.
bool HasOneThread() {
    std::error_code unreadable;
    const std::filesystem::directory_iterator threads("/proc/self/task", unreadable);
    return !unreadable && std::distance(begin(threads), end(threads)) == 1;
}

// Like fork, but the new process becomes a child of this process's parent.
pid_t ForkSibling() {
    return static_cast<pid_t>(
        syscall(SYS_clone, CLONE_PARENT | SIGCHLD, nullptr, nullptr, nullptr, 0));
}

// What the starter does. Never returns to the functions that called fork, because they belong to
// the parent. If an exception leaves a function of `code`, the process is aborted.
[[noreturn]] void Serve(int socket, pid_t parent, const ImportCode& code) noexcept {
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(kCannotRun);
    StartRequest request;
    for (bool isPrepared = false; ReceiveRequest(socket, request); isPrepared = true) {
        if (!isPrepared) code.prepare();
        if (!isPrepared && !HasOneThread()) _exit(kCannotRun);
        const pid_t id = ForkSibling();
        if (id == 0) {
            close(socket);
            SetUpImport(request.files[0], request.files[1], parent);
            for (const int file : request.files)
                close(file);
            std::exit(code.run(request.arguments));
        }
        const int answer = id < 0 ? -errno : id;
        for (const int file : request.files)
            close(file);
        if (send(socket, &answer, sizeof(answer), MSG_NOSIGNAL) != sizeof(answer)) break;
    }
    _exit(0);
}

}  // namespace

ImportStarter::ImportStarter(const ImportCode& code) {
    int ends[2];
    if (!HasOneThread() || socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) return;
    const pid_t parent = getpid();
    id_ = fork();
    if (id_ == 0) {
        close(ends[0]);
        Serve(ends[1], parent, code);
    }
    close(ends[1]);
    socket_ = ends[0];
    if (id_ < 0) Stop();
}

ImportStarter::~ImportStarter() {
    Stop();
}

void ImportStarter::Stop() {
    if (socket_ >= 0) close(socket_);
    socket_ = -1;
    if (id_ < 0) return;
    kill(id_, SIGKILL);
    while (waitpid(id_, nullptr, 0) < 0 && errno == EINTR) {
    }
    id_ = -1;
}

pid_t ImportStarter::Start(const std::vector<std::string>& arguments, int output, int errors) {
    int answer = 0;
    const bool isAnswered =
        SendRequest(socket_, arguments, {output, errors}) &&
        Uninterrupted([&] { return recv(socket_, &answer, sizeof(answer), 0); }) == sizeof(answer);
    if (isAnswered && answer > 0) return answer;
    // The system has no room for another process or for its memory now.
    if (isAnswered && (answer == -EAGAIN || answer == -ENOMEM))
        throw std::system_error(-answer, std::generic_category());
    Stop();
    return -1;
}

void SetUpImport(int output, int errors, pid_t parent) {
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGINT);
    // If the parent died before prctl was called, the child gets no signal. So the child ends here.
    if (getppid() != parent) _exit(kCannotRun);
    const int nullDevice = open("/dev/null", O_RDWR | O_CLOEXEC);
    if (nullDevice < 0 || dup2(nullDevice, STDIN_FILENO) < 0 || dup2(output, STDOUT_FILENO) < 0 ||
        dup2(errors, STDERR_FILENO) < 0)
        _exit(kCannotRun);
    close(nullDevice);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

}  // namespace dataset
