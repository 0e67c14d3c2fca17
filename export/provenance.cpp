#include "export/provenance.h"

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "text/wide_text.h"

namespace exporters {
namespace {

using nlohmann::json;

// Returns the last part of a path as valid UTF-8, because JSON can hold no other bytes.
std::string FileName(const std::string& path) {
    return text::EncodeUtf8(text::DecodeUtf8(std::string_view(path).substr(path.rfind('/') + 1)));
}

json SourceJson(const Source& source) {
    json extras = json::object();
    json files = json::array();
    json sources = json::array();
    for (const SourceFile& file : source.files) {
        files.push_back(FileName(file.path));
        json& entry = sources.emplace_back(json{{"name", FileName(file.path)}});
        if (file.bytes) entry["bytes"] = *file.bytes;
        if (!file.sha256.empty()) entry["sha256"] = file.sha256;
    }
    if (!files.empty()) {
        extras["sourceFiles"] = files;
        extras["sources"] = sources;
    }
    if (!source.format.empty()) extras["sourceFormat"] = source.format;
    if (!source.tool.empty()) extras["tool"] = source.tool;
    return extras;
}

std::string_view NameOf(UpAxis axis) {
    static constexpr std::string_view kNames[] = {"x", "y", "z"};
    return kNames[static_cast<std::size_t>(axis)];
}

json OptionsJson(const Options& options) {
    json out = {{"scale", options.scale}, {"sourceUp", NameOf(options.up)}, {"mesh", options.mesh}};
    if (options.framesPerSecond) out["framesPerSecond"] = *options.framesPerSecond;
    if (options.resampleTo) out["resampleTo"] = *options.resampleTo;
    if (options.inPlace) out["inPlace"] = true;
    if (options.allNodes) out["allNodes"] = true;
    if (options.aim) out["aim"] = true;
    if (options.frames) out["frames"] = {options.frames->first, options.frames->last};
    for (const auto& [name, value] : options.source.options) {
        const json parsed = json::parse(value, nullptr, false);
        out[name] = parsed.is_primitive() && !parsed.is_discarded() ? parsed : json(value);
    }
    return out;
}

}  // namespace

json ProvenanceJson(const Options& options) {
    json provenance = SourceJson(options.source);
    provenance["options"] = OptionsJson(options);
    return provenance;
}

}  // namespace exporters
