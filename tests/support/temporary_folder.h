// A new folder for one test in the system's temporary folder. It is removed, with everything in it,
// when the object goes out of scope.
#pragma once

#include <set>
#include <string>
#include <string_view>

namespace support {

class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    // The folder itself, without a slash at the end.
    const std::string& Path() const { return path_; }
    // The path that a file or a folder of this name has, or would have, in the folder.
    std::string Path(std::string_view name) const;

    // Writes a file, creates the folders that its name contains, and returns its path.
    std::string Write(std::string_view name, std::string_view bytes) const;
    std::string Read(std::string_view name) const;
    // The names of the files and folders that are directly in the folder.
    std::set<std::string> Names() const;

  private:
    std::string path_;
};

}  // namespace support
