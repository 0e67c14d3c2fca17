#include "cli/source_files.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <fmt/format.h>
#include <nettle/sha2.h>
#include <string>
#include <string_view>

#include "files/mapped_file.h"

namespace cli {
namespace {

// Returns the check sum in hexadecimal digits.
std::string Sha256(std::string_view bytes) {
    sha256_ctx context;
    sha256_init(&context);
    sha256_update(&context, bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
    std::array<std::uint8_t, SHA256_DIGEST_SIZE> digest{};
    sha256_digest(&context, digest.size(), digest.data());
    std::string text;
    for (const std::uint8_t byte : digest)
        text += fmt::format("{:02x}", byte);
    return text;
}

exporters::SourceFile Describe(const take::InputFile& file, bool hashes) {
    exporters::SourceFile described{file.path};
    if (file.content) {
        described.bytes = file.content->size();
        if (hashes) described.sha256 = Sha256(*file.content);
        return described;
    }
    const files::MappedFile mapped(file.path);
    if (!mapped.Problem().empty()) return described;
    described.bytes = mapped.Text().size();
    if (hashes) described.sha256 = Sha256(mapped.Text());
    return described;
}

}  // namespace

SourceFiles DescribeSources(const take::Request& request, bool hashes) {
    SourceFiles sources;
    const auto start = std::chrono::steady_clock::now();
    sources.files.push_back(Describe(request.file, hashes));
    if (request.motion) sources.files.push_back(Describe(*request.motion, hashes));
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
    if (hashes) sources.hashMilliseconds = took.count();
    return sources;
}

}  // namespace cli
