// A folder of a test's own, gone with everything in it at the end of the test.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "zkhost-test-XXXXXX").string();
        folder_ = mkdtemp(name.data());
    }
    ~TemporaryFolder() { std::filesystem::remove_all(folder_); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }
    void Put(const std::string& name, const std::string& content) const {
        std::ofstream(Path(name), std::ios::binary) << content;
    }
    std::string Get(const std::string& name) const {
        std::ifstream file(Path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::set<std::string> Names() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder_))
            names.insert(entry.path().filename().string());
        return names;
    }

  private:
    std::filesystem::path folder_;
};
