#pragma once

#include <string>
#include <string_view>

namespace fuzz {

// A file without a disk, that can be opened by a path for as long as it lives.
class MemoryFile {
  public:
    explicit MemoryFile(std::string_view bytes);
    ~MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    const std::wstring& Path() const { return path_; }

  private:
    int descriptor_;
    std::wstring path_;
};

}  // namespace fuzz
