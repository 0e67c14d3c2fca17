#include "cli/option_values.h"

#include <cmath>
#include <filesystem>
#include <system_error>

#include "files/links.h"
#include "survey/encoding.h"
#include "take/thread_limit.h"

namespace cli {

double FiniteNumber(const char* option, const std::string& text) {
    const auto number = ParseNumber(text);
    if (!number || !std::isfinite(*number))
        throw UsageError(fmt::format("{} {}: not a number", option, text));
    return *number;
}

double PositiveNumber(const char* option, const std::string& text) {
    const double number = FiniteNumber(option, text);
    if (number <= 0.0)
        throw UsageError(fmt::format("{} {}: must be greater than zero", option, text));
    return number;
}

std::size_t Count(const char* option, const std::string& text, std::size_t most) {
    const double count = PositiveNumber(option, text);
    if (count != std::floor(count) || count > static_cast<double>(most))
        throw UsageError(
            fmt::format("{} {}: expected a whole number from 1 to {}", option, text, most));
    return static_cast<std::size_t>(count);
}

std::optional<std::size_t> ThreadCount(const std::optional<std::string>& text) {
    if (!text) return std::nullopt;
    return Count("--threads", *text, take::kMostThreads);
}

Progress ProgressChoice(const std::optional<std::string>& text) {
    if (!text) return Progress::Auto;
    return Choice<Progress>(
        "--progress", *text,
        {{"auto", Progress::Auto}, {"on", Progress::On}, {"off", Progress::Off}});
}

void RequireKnownEncoding(const std::string& encoding) {
    if (!encoding.empty() && !survey::IsKnownEncoding(encoding))
        throw UsageError(
            fmt::format("--encoding {}: unknown; 'iconv --list' lists the encodings", encoding));
}

void RequireFileName(const char* option, const std::string& path) {
    std::error_code error;
    if (path.empty()) throw UsageError(fmt::format("{}: the name of the file is empty", option));
    if (path.ends_with('/') || std::filesystem::is_directory(path, error))
        throw UsageError(fmt::format("{} {}: a folder is no output", option, path));
}

void RequireNotOverwritten(const std::string& input, const std::string& output) {
    if (!input.empty() && files::IsSameFile(output, input))
        throw UsageError(fmt::format("{} would be overwritten by an output", input));
}

}  // namespace cli
