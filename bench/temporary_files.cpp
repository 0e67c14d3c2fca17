#include "bench/temporary_files.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <unistd.h>
#include <vector>

namespace bench {
namespace {

// The destructor removes the files.
struct Files {
    std::vector<std::string> paths;
    Files() = default;
    Files(const Files&) = delete;
    Files& operator=(const Files&) = delete;
    ~Files() {
        for (const std::string& path : paths)
            std::remove(path.c_str());
    }
};

}  // namespace

std::string KeepTemporaryFile(const std::string& name, const std::string& bytes) {
    static Files files;
    std::string path = (std::filesystem::temp_directory_path() /
                        ("zkmocap-bench-" + std::to_string(getpid()) + "-" + name))
                           .string();
    std::ofstream(path, std::ios::binary) << bytes;
    files.paths.push_back(path);
    return path;
}

}  // namespace bench
