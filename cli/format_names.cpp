#include "cli/format_names.h"

#include <filesystem>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <set>
#include <string_view>
#include <system_error>

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

const exporters::Format* FormatCalled(const char* option, std::string_view name) {
    if (name.empty()) throw UsageError(fmt::format("{}: the name of a format is missing", option));
    if (const auto* format = exporters::FindFormat('.' + LowerCase(name))) return format;
    const std::vector<std::string> known = Extensions(1);
    throw UsageError(fmt::format("{} {}: unknown format; known are {}{}", option, name,
                                 fmt::join(known, " "), Suggestion(name, known)));
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

std::vector<const exporters::Format*> ParseFormats(const char* option,
                                                   const std::vector<std::string>& values) {
    std::set<const exporters::Format*> named;
    for (std::string_view rest : values) {
        while (true) {
            const std::size_t comma = rest.find(',');
            named.insert(FormatCalled(option, rest.substr(0, comma)));
            if (comma == std::string_view::npos) break;
            rest.remove_prefix(comma + 1);
        }
    }
    std::vector<const exporters::Format*> formats;
    for (const exporters::Format& format : exporters::Formats())
        if (named.contains(&format)) formats.push_back(&format);
    return formats;
}

}  // namespace cli
