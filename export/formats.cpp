#include "export/formats.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "export/bvh.h"
#include "export/csv.h"
#include "export/fbx.h"
#include "export/gltf.h"
#include "export/npz.h"
#include "export/page.h"
#include "export/svg.h"

namespace exporters {
namespace {

Notes WriteRecord(const Content& content, const Sinks& sinks) {
    if (!content.record) throw ExportError("there is no record of the import");
    WriteJsonRecord(sinks.out, content.scene, *content.record, content.progress);
    return {};
}

Notes WriteGltfPair(const Content& content, const Sinks& sinks) {
    return WriteGltf(sinks.out, *sinks.side, sinks.sideName, content.scene, content.options,
                     content.progress);
}

Notes WriteArrays(const Content& content, const Sinks& sinks) {
    const bool hasFindings = content.record && content.record->findings;
    return WriteNpz(sinks.out, content.scene, content.options,
                    hasFindings ? *content.record->findings : std::vector<std::string>(),
                    content.progress);
}

// Returns the codes of the findings, each once.
std::vector<std::string> CodesOf(const std::vector<std::string>& findings) {
    std::vector<std::string> codes;
    for (const std::string& finding : findings) {
        const nlohmann::json parsed = nlohmann::json::parse(finding, nullptr, false);
        if (!parsed.is_object() || !parsed.contains("code") || !parsed["code"].is_string())
            continue;
        const std::string code = parsed["code"].get<std::string>();
        if (std::find(codes.begin(), codes.end(), code) == codes.end()) codes.push_back(code);
    }
    return codes;
}

Notes WriteSheet(const Content& content, const Sinks& sinks) {
    const bool hasFindings = content.record && content.record->findings;
    return WriteSvg(sinks.out, content.scene, content.options,
                    hasFindings ? CodesOf(*content.record->findings) : std::vector<std::string>(),
                    content.progress);
}

Notes WriteHtml(const Content& content, const Sinks& sinks) {
    const PageTake take =
        BuildPageTake(content.scene, content.options, content.record, content.progress);
    WritePage(sinks.out, {&take, 1});
    return take.notes;
}

// Writes a format that has one file and needs no record of the run.
template <auto kWriter>
Notes WriteOneFile(const Content& content, const Sinks& sinks) {
    return kWriter(sinks.out, content.scene, content.options, content.progress);
}

// The options that ExportedMotion applies.
constexpr unsigned kMotion =
    kScale | kUpAxis | kRate | kResampling | kFrames | kInPlace | kAllNodes;
constexpr unsigned kGltf = kMotion | kMesh | kAim | kAnimations | kProvenance;

constexpr Format kFormats[] = {
    {".glb", "", kGltf, false, WriteOneFile<WriteGlb>},
    {".gltf", ".bin", kGltf, false, WriteGltfPair},
    {".fbx", "", kMotion | kMesh | kCompress | kProvenance, false, WriteOneFile<WriteFbx>},
    {".bvh", "", kMotion | kDigits, false, WriteOneFile<WriteBvh>},
    {".csv", "", kMotion, false, WriteOneFile<WriteCsv>},
    {".npz", "", kMotion | kFloat32 | kCompress | kProvenance, false, WriteArrays},
    {".html", "", kMotion | kProvenance, false, WriteHtml},
    {".svg", "", kMotion, false, WriteSheet},
    {".json", "", 0, true, WriteRecord},
};

}  // namespace

std::span<const Format> Formats() {
    return kFormats;
}

const Format* FindFormat(std::string_view extension) {
    const auto* const found =
        std::find_if(std::begin(kFormats), std::end(kFormats),
                     [&](const Format& format) { return format.extension == extension; });
    return found == std::end(kFormats) ? nullptr : found;
}

std::vector<std::string> FilesOf(const Format& format, const std::string& path) {
    std::vector<std::string> files = {path};
    if (!format.sideExtension.empty())
        files.push_back(
            path.substr(0, path.size() - format.extension.size()).append(format.sideExtension));
    return files;
}

std::string Write(const Format& format, const Content& content, const Sinks& sinks, Notes& notes) {
    try {
        notes = format.write(content, sinks);
        return {};
    } catch (const ExportError& error) {
        return error.what();
    }
}

}  // namespace exporters
