// Maps a whole file into memory.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "text/storage.h"

namespace files {

// Why a file of text::kTooLarge bytes or more cannot be read.
inline constexpr char kTooLargeProblem[] = "is too large: files of 4 GiB and more cannot be read";

// Maps a regular file of less than 4 GiB for reading. If another process shortens the file while it
// is mapped, reading the lost part raises SIGBUS.
class MappedFile final : public text::StoredText {
  public:
    // If the file cannot be read, the text is empty and Problem() says why. Throws std::bad_alloc
    // when memory runs out.
    explicit MappedFile(const std::string& path);
    ~MappedFile() override;

    std::string_view Text() const override { return {text_, size_}; }
    // Why the file could not be read, for example "no such file", "permission denied" or "is a
    // folder". Empty if it was read.
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
