#pragma once

#include <string>
#include <string_view>

namespace fuzz {

// A file in memory. It can be opened by its path until the object is destroyed.
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
