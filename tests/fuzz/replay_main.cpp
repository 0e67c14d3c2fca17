// Replaces a fuzzing engine: runs the fuzzer on each file, and on all files of each folder, that
// the command line names.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> FilesOf(int count, char** arguments) {
    std::vector<fs::path> files;
    for (int i = 1; i < count; ++i) {
        if (!fs::is_directory(arguments[i])) {
            files.emplace_back(arguments[i]);
            continue;
        }
        const std::size_t before = files.size();
        for (const auto& entry : fs::recursive_directory_iterator(arguments[i]))
            if (entry.is_regular_file()) files.push_back(entry.path());
        if (files.size() == before)
            throw std::runtime_error(std::string("no file in the folder ") + arguments[i]);
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<char> Read(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw std::runtime_error("cannot be read");
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

}  // namespace

int main(int count, char** arguments) try {
    const std::vector<fs::path> files = FilesOf(count, arguments);
    int failed = 0;
    for (const fs::path& file : files) {
        try {
            const std::vector<char> bytes = Read(file);
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                   bytes.size());
        } catch (const std::exception& error) {
            std::fprintf(stderr, "%s: %s\n", file.c_str(), error.what());
            ++failed;
        }
    }
    std::printf("%zu files, %d failed\n", files.size(), failed);
    return failed == 0 && !files.empty() ? 0 : 1;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
