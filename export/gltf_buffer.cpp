#include "export/gltf_buffer.h"

#include <bit>
#include <nlohmann/json.hpp>

#include "text/byte_sink.h"

namespace exporters {
namespace {

using nlohmann::json;

// The format is little-endian, and numbers are written as they are in memory.
static_assert(std::endian::native == std::endian::little);

// The number of zero bytes to write after a piece of this size, so that the next piece is aligned
// to four bytes.
std::size_t PaddingOf(std::size_t size) {
    return (4 - size % 4) % 4;
}

}  // namespace

std::size_t JsonList::Add(const json& element) {
    return AddText(element.dump());
}

std::size_t JsonList::AddText(const std::string& json) {
    if (count_ > 0) elements_ += ',';
    elements_ += json;
    return count_++;
}

void GltfBuffer::BeginView(GltfTarget target) {
    Finish();
    target_ = target;
}

void GltfBuffer::Finish() {
    if (IsViewEmpty()) return;
    json view = {{"buffer", 0}, {"byteLength", byteLength_ - viewStart_}};
    if (viewStart_ > 0) view["byteOffset"] = viewStart_;
    if (target_ != GltfTarget::None) view["target"] = static_cast<int>(target_);
    views_.Add(view);
    viewStart_ = byteLength_;
}

std::size_t GltfBuffer::AddBytes(std::span<const std::byte> bytes, std::size_t count,
                                 GltfComponent component, const char* type, const json& more) {
    json accessor = {{"bufferView", views_.Count()},
                     {"componentType", static_cast<int>(component)},
                     {"count", count},
                     {"type", type}};
    if (!IsViewEmpty()) accessor["byteOffset"] = byteLength_ - viewStart_;
    accessor.update(more);
    pieces_.push_back(bytes);
    byteLength_ += bytes.size() + PaddingOf(bytes.size());
    return accessors_.Add(accessor);
}

void GltfBuffer::Write(text::ByteSink& out, const Progress& progress) const {
    static constexpr char kZeros[4] = {};
    for (std::size_t index = 0; index < pieces_.size(); ++index) {
        progress.Report(index, pieces_.size());
        const auto& piece = pieces_[index];
        out.Write({reinterpret_cast<const char*>(piece.data()), piece.size()});
        out.Write({kZeros, PaddingOf(piece.size())});
    }
}

}  // namespace exporters
