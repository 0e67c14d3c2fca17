// The files that tests read.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace support {

// All bytes of a file. Throws std::runtime_error, which names the file, where it cannot be read.
std::string ReadText(const std::string& path);

// The files directly in a folder that have the extension (".bvh"), by name. A folder that does not
// exist, or that holds no such file, is an error: throws std::runtime_error, which names the
// folder.
std::vector<std::filesystem::path> FilesIn(const std::filesystem::path& folder,
                                           const std::string& extension);

// The folder with real captures that this build was configured with; none without one. What is
// missing in a folder that exists is an error.
std::optional<std::filesystem::path> CaptureFolder();
inline constexpr const char* kNoCaptures =
    "this build has no folder with real captures (the CMake variable ZKMOCAP_DATA_DIR)";

}  // namespace support
