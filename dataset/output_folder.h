#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace dataset {

// Creates the output folder, and removes it again if the run cannot start.
class OutputFolder {
  public:
    // Creates the folder and the folders above it, where they do not exist. Throws
    // std::filesystem::filesystem_error. The folders that it created are removed in this case.
    explicit OutputFolder(const std::string& path);
    // Removes the folders that the constructor created, unless Keep was called. A folder that is
    // not empty is not removed.
    ~OutputFolder();
    OutputFolder(const OutputFolder&) = delete;
    OutputFolder& operator=(const OutputFolder&) = delete;

    void Keep() { created_.clear(); }

  private:
    void RemoveCreated() const;

    std::vector<std::filesystem::path> created_;  // each folder after the one that contains it
};

}  // namespace dataset
