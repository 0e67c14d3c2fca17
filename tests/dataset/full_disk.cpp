// A library for LD_PRELOAD. It lets writes to regular files fail as if the disk were full, as soon
// as the file exists whose path is in the environment variable FULL_DISK_WHEN. Writes of at most
// FULL_DISK_ROOM bytes still succeed.
#include <cerrno>
#include <cstdlib>
#include <dlfcn.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

namespace {

bool IsFull(int file, std::size_t size) {
    const char* when = std::getenv("FULL_DISK_WHEN");
    const char* room = std::getenv("FULL_DISK_ROOM");
    struct stat status {};
    return when && access(when, F_OK) == 0 && fstat(file, &status) == 0 &&
           S_ISREG(status.st_mode) && size > std::strtoull(room ? room : "0", nullptr, 10);
}

}  // namespace

extern "C" __attribute__((visibility("default"))) ssize_t write(int file, const void* bytes,
                                                                std::size_t size) {
    using Write = ssize_t (*)(int, const void*, std::size_t);
    static const auto kWrite = reinterpret_cast<Write>(dlsym(RTLD_NEXT, "write"));
    const int before = errno;
    if (IsFull(file, size)) {
        errno = ENOSPC;
        return -1;
    }
    errno = before;
    return kWrite(file, bytes, size);
}
