// A whole file in memory, looked at in place.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace app {

// Maps a regular file for reading. Another process that shortens the file meanwhile ends this one,
// as with every mapping.
class MappedFile {
  public:
    // Why a file cannot be read is kept, in plain words, and the text is empty then.
    explicit MappedFile(const std::string& path);
    ~MappedFile();
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    // Followed by a NUL byte. Valid as long as this lives.
    std::string_view Text() const { return {text_, size_}; }
    // "no such file", "permission denied", "is a folder", ...; empty where the file was read.
    const std::string& Problem() const { return problem_; }

  private:
    void Map(int file);

    const char* text_ = "";
    std::size_t size_ = 0;
    void* memory_ = nullptr;
    std::size_t memorySize_ = 0;
    std::string problem_;
};

}  // namespace app
