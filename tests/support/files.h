// The files that tests read.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace support {

// Returns all bytes of a file. Throws std::runtime_error, which names the file, if it cannot be
// read.
std::string ReadText(const std::string& path);

// Returns the files directly in a folder that have the extension (".bvh"), sorted by path. Throws
// std::runtime_error, which names the folder, if it does not exist or has no such file.
std::vector<std::filesystem::path> FilesIn(const std::filesystem::path& folder,
                                           const std::string& extension);

// Returns the folder with real captures that this build was configured with, if there is one. A
// test that misses a file in such a folder must fail.
std::optional<std::filesystem::path> CaptureFolder();
inline constexpr const char* kNoCaptures =
    "this build has no folder with real captures (the CMake variable ZKMOCAP_DATA_DIR)";

}  // namespace support
