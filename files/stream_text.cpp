#include "files/stream_text.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include "files/mapped_file.h"

namespace files {
namespace {

// The text has room for this many bytes when reading begins, if the size is not known.
constexpr std::uint64_t kFirstSize = std::uint64_t{64} << 10;

// The number of bytes of a regular file; 0 for a pipe or a terminal.
std::uint64_t KnownSize(int file) {
    struct stat status {};
    const bool isKnown = fstat(file, &status) == 0 && S_ISREG(status.st_mode);
    return isKnown ? static_cast<std::uint64_t>(status.st_size) : 0;
}

// Waits until a stream that was opened without waiting has data or has ended.
bool WaitForData(int file) {
    pollfd waited{file, POLLIN, 0};
    return poll(&waited, 1, -1) >= 0 || errno == EINTR;
}

}  // namespace

StreamText ReadStream(int file, std::uint64_t limit) {
    const std::uint64_t known = KnownSize(file);
    if (known >= limit) return {"", kTooLargeProblem};
    StreamText result;
    // One byte more than the size, so that the end of the file is seen without more memory.
    result.text.resize(known > 0 ? known + 1 : std::min(kFirstSize, limit));
    std::uint64_t size = 0;
    while (true) {
        const ssize_t count = read(file, result.text.data() + size, result.text.size() - size);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0 && errno == EAGAIN && WaitForData(file)) continue;
        if (count < 0) return {"", errno == EISDIR ? "is a folder" : std::strerror(errno)};
        if (count == 0) break;
        size += static_cast<std::uint64_t>(count);
        if (size >= limit) return {"", kTooLargeProblem};
        if (size == result.text.size()) result.text.resize(std::min(limit, size * 2));
    }
    result.text.resize(size);
    return result;
}

}  // namespace files
