// A whole file in memory, looked at in place.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "text/storage.h"

namespace files {

// Maps a regular file for reading. Another process that shortens the file meanwhile ends this one,
// as with every mapping.
class MappedFile final : public text::StoredText {
  public:
    // Why a file cannot be read is kept, in plain words, and the text is empty then.
    explicit MappedFile(const std::string& path);
    ~MappedFile() override;

    std::string_view Text() const override { return {text_, size_}; }
    // "no such file", "permission denied", "is a folder", ...
    const std::string& Problem() const override { return problem_; }

  private:
    void Map(int file);

    const char* text_ = "";
    std::size_t size_ = 0;
    void* memory_ = nullptr;
    std::size_t memorySize_ = 0;
    std::string problem_;
};

}  // namespace files
