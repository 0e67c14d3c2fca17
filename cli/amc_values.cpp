#include "cli/amc_values.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>

namespace cli {
namespace {

constexpr std::size_t kSampleSize = std::size_t{1} << 18;  // bytes

constexpr std::string_view kBlanks = " \t";

// Counts the words of the line after the first one.
std::uint64_t CountValues(std::string_view line) {
    std::uint64_t words = 0;
    for (std::size_t start = line.find_first_not_of(kBlanks); start != std::string_view::npos;) {
        ++words;
        const std::size_t end = line.find_first_of(kBlanks, start);
        start = line.find_first_not_of(kBlanks, end);
    }
    return words > 0 ? words - 1 : 0;
}

bool IsHeaderLine(std::string_view line) {
    return line.starts_with(':') || line.starts_with('#');
}

// The values in the whole lines of the text. A line of a frame is a number or the name of a bone
// with its values.
std::uint64_t CountValuesOfLines(std::string_view text) {
    std::uint64_t values = 0;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find_first_of("\r\n", start), text.size());
        const std::string_view line = text.substr(start, end - start);
        if (!IsHeaderLine(line)) values += CountValues(line);
        start = end + 1;
    }
    return values;
}

std::uint64_t Estimate(std::string_view start, std::uint64_t size) {
    if (start.empty() || start.find('\0') != std::string_view::npos) return 0;
    return CountValuesOfLines(start) * size / start.size();
}

}  // namespace

std::uint64_t EstimateAmcValues(const take::InputFile& amc) {
    if (amc.content)
        return Estimate(std::string_view(*amc.content).substr(0, kSampleSize), amc.content->size());
    std::error_code error;
    const std::filesystem::path path = amc.path;
    if (!std::filesystem::is_regular_file(path, error)) return 0;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error) return 0;
    std::ifstream file(path, std::ios::binary);
    std::string start(kSampleSize, '\0');
    file.read(start.data(), static_cast<std::streamsize>(start.size()));
    start.resize(static_cast<std::size_t>(file.gcount()));
    return Estimate(start, size);
}

}  // namespace cli
