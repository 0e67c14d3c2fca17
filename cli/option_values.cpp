#include "cli/option_values.h"

#include <cmath>
#include <filesystem>
#include <system_error>

#include "files/links.h"
#include "survey/encoding.h"

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
