#include "export/gltf.h"

#include <cstdint>
#include <limits>

#include "export/gltf_document.h"
#include "text/byte_sink.h"

namespace exporters {
namespace {

constexpr std::uint32_t kMagic = 0x46546C67;        // "glTF"
constexpr std::uint32_t kJsonChunk = 0x4E4F534A;    // "JSON"
constexpr std::uint32_t kBinaryChunk = 0x004E4942;  // "BIN" and a zero byte
constexpr std::uint32_t kVersion = 2;
constexpr std::uint64_t kHeaderSize = 12;
constexpr std::uint64_t kChunkHeaderSize = 8;
// The share of the time that building the document takes. The rest is for writing it.
constexpr double kBuildShare = 0.88;

// Writes 32 bits, little-endian.
void WriteWord(text::ByteSink& out, std::uint64_t word) {
    char bytes[4];
    for (char& byte : bytes) {
        byte = static_cast<char>(word & 0xFF);
        word >>= 8;
    }
    out.Write({bytes, sizeof(bytes)});
}

}  // namespace

Notes WriteGlb(text::ByteSink& out, const headless::Scene& scene, const Options& options,
               const Progress& progress) {
    const GltfDocument document(scene, options, progress.Between(0.0, kBuildShare));
    std::string json = document.Json("");
    json.append((4 - json.size() % 4) % 4, ' ');
    const std::uint64_t binary = document.Buffer().ByteLength();
    const std::uint64_t size =
        kHeaderSize + kChunkHeaderSize + json.size() + (binary > 0 ? kChunkHeaderSize + binary : 0);
    if (size > std::numeric_limits<std::uint32_t>::max())
        throw ExportError("the scene is too large for a .glb file; a .gltf can hold it");
    WriteWord(out, kMagic);
    WriteWord(out, kVersion);
    WriteWord(out, size);
    WriteWord(out, json.size());
    WriteWord(out, kJsonChunk);
    out.Write(json);
    if (binary > 0) {
        WriteWord(out, binary);
        WriteWord(out, kBinaryChunk);
        document.Buffer().Write(out, progress.Between(kBuildShare, 1.0));
    }
    return document.GetNotes();
}

Notes WriteGltf(text::ByteSink& out, text::ByteSink& binary, std::string_view binaryName,
                const headless::Scene& scene, const Options& options, const Progress& progress) {
    const GltfDocument document(scene, options, progress.Between(0.0, kBuildShare));
    document.Buffer().Write(binary, progress.Between(kBuildShare, 1.0));
    out.Write(document.Json(binaryName));
    out.Write("\n");
    return document.GetNotes();
}

}  // namespace exporters
