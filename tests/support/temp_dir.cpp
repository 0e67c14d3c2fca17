#include "tests/support/temp_dir.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace support {

TempDir::TempDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "zkmocap-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
    path_ = pattern;
}

TempDir::~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string TempDir::Write(const std::string& name, const std::string& bytes) const {
    const std::filesystem::path file = path_ / name;
    std::ofstream(file, std::ios::binary) << bytes;
    return file.string();
}

}  // namespace support
