#pragma once

#include <filesystem>
#include <string>

namespace support {

// A folder of the test's own, removed with everything in it.
class TempDir {
  public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    // Writes the bytes and returns the file's path.
    std::string Write(const std::string& name, const std::string& bytes) const;

  private:
    std::filesystem::path path_;
};

}  // namespace support
