#include "cli/format_names.h"

#include <filesystem>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <system_error>
#include <vector>

#include "cli/arguments.h"
#include "cli/suggestion.h"
#include "text/path_text.h"

namespace cli {
namespace {

// Returns the extensions of all formats, without the first `skipped` characters of each.
std::vector<std::string> Extensions(std::size_t skipped) {
    std::vector<std::string> extensions;
    for (const exporters::Format& format : exporters::Formats())
        extensions.emplace_back(format.extension.substr(skipped));
    return extensions;
}

}  // namespace

const exporters::Format* FormatOfFile(const std::string& path) {
    const std::string extension = text::LowerCaseExtension(path);
    if (const auto* format = exporters::FindFormat(extension)) return format;
    std::error_code error;
    if (path.ends_with('/') || std::filesystem::is_directory(path, error))
        throw UsageError(
            fmt::format("-o {}: a folder is no output; name a file in it, such as {}{}take.glb",
                        path, path, path.ends_with('/') ? "" : "/"));
    const std::vector<std::string> known = Extensions(0);
    throw UsageError(fmt::format("{}: unknown output format; known are {}{}", path,
                                 fmt::join(known, " "), Suggestion(extension, known)));
}

const exporters::Format* FormatCalled(const char* option, const std::string& name) {
    if (const auto* format = exporters::FindFormat('.' + LowerCase(name))) return format;
    const std::vector<std::string> known = Extensions(1);
    throw UsageError(fmt::format("{} {}: unknown format; known are {}{}", option, name,
                                 fmt::join(known, " "), Suggestion(name, known)));
}

}  // namespace cli
