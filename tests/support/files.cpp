#include "tests/support/files.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace support {

std::string ReadText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    if (!file.is_open() || file.bad()) throw std::runtime_error("cannot read " + path);
    return text.str();
}

std::vector<std::filesystem::path> FilesIn(const std::filesystem::path& folder,
                                           const std::string& extension) {
    if (!std::filesystem::is_directory(folder))
        throw std::runtime_error("there is no folder " + folder.string());
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.is_regular_file() && entry.path().extension() == extension)
            files.push_back(entry.path());
    if (files.empty())
        throw std::runtime_error("the folder " + folder.string() + " has no file *" + extension);
    std::sort(files.begin(), files.end());
    return files;
}

std::optional<std::filesystem::path> CaptureFolder() {
#ifdef ZKMOCAP_DATA_DIR
    return ZKMOCAP_DATA_DIR;
#else
    return std::nullopt;
#endif
}

}  // namespace support
