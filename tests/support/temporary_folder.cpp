#include "tests/support/temporary_folder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <system_error>

#include "tests/support/files.h"

namespace support {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() : path_(fs::temp_directory_path() / "zkmocap-test-XXXXXX") {
    if (mkdtemp(path_.data()) == nullptr)
        throw std::runtime_error("cannot create a temporary folder as " + path_);
}

TemporaryFolder::~TemporaryFolder() {
    // A test does not fail because a file cannot be removed.
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::string TemporaryFolder::Path(std::string_view name) const {
    return path_ + '/' + std::string(name);
}

std::string TemporaryFolder::Write(std::string_view name, std::string_view bytes) const {
    std::string path = Path(name);
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) throw std::runtime_error("cannot write " + path);
    return path;
}

std::string TemporaryFolder::Read(std::string_view name) const {
    return ReadText(Path(name));
}

std::set<std::string> TemporaryFolder::Names() const {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(path_))
        names.insert(entry.path().filename().string());
    return names;
}

}  // namespace support
