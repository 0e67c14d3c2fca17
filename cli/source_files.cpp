#include "cli/source_files.h"

#include <array>
#include <chrono>
#include <fmt/format.h>
#include <openssl/evp.h>
#include <string>
#include <string_view>

#include "files/mapped_file.h"

namespace cli {
namespace {

// Returns the check sum in hexadecimal digits. Returns an empty text if it cannot be computed.
std::string Sha256(std::string_view bytes) {
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
    unsigned size = 0;
    if (EVP_Digest(bytes.data(), bytes.size(), digest.data(), &size, EVP_sha256(), nullptr) != 1)
        return {};
    std::string text;
    for (unsigned index = 0; index < size; ++index)
        text += fmt::format("{:02x}", digest[index]);
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
