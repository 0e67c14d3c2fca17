#include "cli/output_formats.h"

#include <fmt/format.h>
#include <set>
#include <string_view>

#include "cli/arguments.h"

namespace cli {
namespace {

const exporters::Format* FormatNamed(std::string_view name) {
    if (name.empty()) throw UsageError("--to: the name of a format is missing");
    std::string extension = ".";
    for (const char letter : name)
        extension +=
            letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    const exporters::Format* format = exporters::FindFormat(extension);
    if (!format) throw UsageError(fmt::format("--to {}: unknown format", name));
    return format;
}

}  // namespace

std::vector<const exporters::Format*> ParseFormats(const std::vector<std::string>& values) {
    std::set<const exporters::Format*> named;
    for (std::string_view rest : values) {
        while (true) {
            const std::size_t comma = rest.find(',');
            named.insert(FormatNamed(rest.substr(0, comma)));
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
