#include "tests/fuzz/memory_file.h"

#include <cerrno>
#include <sys/mman.h>
#include <system_error>
#include <unistd.h>

namespace fuzz {

MemoryFile::MemoryFile(std::string_view bytes) : descriptor_(memfd_create("input", MFD_CLOEXEC)) {
    if (descriptor_ < 0) throw std::system_error(errno, std::generic_category(), "memfd_create");
    path_ = L"/proc/self/fd/" + std::to_wstring(descriptor_);
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor_, bytes.data(), bytes.size());
        if (written < 0) throw std::system_error(errno, std::generic_category(), "write");
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

MemoryFile::~MemoryFile() {
    close(descriptor_);
}

}  // namespace fuzz
