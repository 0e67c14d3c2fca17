#include "files/mapped_file.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace files {
namespace {

std::string TextOf(int error) {
    switch (error) {
        case ENOENT:
            return "no such file";
        case EACCES:
            return "permission denied";
        default:
            return std::strerror(error);
    }
}

std::string ProblemOf(const struct stat& status) {
    if (S_ISDIR(status.st_mode)) return "is a folder";
    if (!S_ISREG(status.st_mode)) return "is not a regular file";
    if (static_cast<std::uint64_t>(status.st_size) >= text::kTooLarge) return kTooLargeProblem;
    return {};
}

}  // namespace

MappedFile::MappedFile(const std::string& path) {
    // Without O_NONBLOCK, opening a FIFO would block until another process opens it for writing.
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0) {
        problem_ = TextOf(errno);
        return;
    }
    try {
        Map(file);
    } catch (...) {
        close(file);
        throw;
    }
    close(file);
}

// Reserves at least one page of zeros more than the file needs. This way a NUL byte follows the
// text even if the file fills its last page.
void MappedFile::Map(int file) {
    struct stat status {};
    if (fstat(file, &status) != 0) {
        problem_ = TextOf(errno);
        return;
    }
    problem_ = ProblemOf(status);
    if (!problem_.empty() || status.st_size == 0) return;
    const auto size = static_cast<std::size_t>(status.st_size);
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::size_t all = (size / page + 2) * page;
    void* memory = mmap(nullptr, all, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) throw std::bad_alloc();
    memory_ = memory;
    memorySize_ = all;
    // Without MAP_POPULATE, which takes about as long as reading the file. The system maps several
    // pages at their first access, and the threads that read the file do so at the same time.
    constexpr int kHow = MAP_PRIVATE | MAP_FIXED;
    if (mmap(memory, size, PROT_READ, kHow, file, 0) == MAP_FAILED) {
        problem_ = TextOf(errno);
        return;
    }
    text_ = static_cast<const char*>(memory);
    size_ = size;
}

MappedFile::~MappedFile() {
    if (memory_) munmap(memory_, memorySize_);
}

}  // namespace files
