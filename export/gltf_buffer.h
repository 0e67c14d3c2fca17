// The binary part of a glTF file, and the lists that describe it.
// Internal to export/.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <span>
#include <string>
#include <vector>

#include "text/byte_sink.h"

namespace exporters {

// A JSON array as text that grows by an element at a time, so that a long list needs no tree of
// JSON values.
class JsonList {
  public:
    // Returns the index of the new element.
    std::size_t Add(const nlohmann::json& element);
    std::size_t AddText(const std::string& json);
    bool IsEmpty() const { return count_ == 0; }
    std::size_t Count() const { return count_; }
    std::string Text() const { return '[' + elements_ + ']'; }

  private:
    std::string elements_;
    std::size_t count_ = 0;
};

enum class GltfComponent : std::uint16_t {
    UnsignedByte = 5121,
    UnsignedShort = 5123,
    UnsignedInt = 5125,
    Float = 5126
};
enum class GltfTarget : std::uint16_t { None = 0, Vertices = 34962, Indices = 34963 };

// Keeps references to the elements, which have to stay as they are until the last call of Write.
class GltfBuffer {
  public:
    // The accessors that are added from now on belong to a new view.
    void BeginView(GltfTarget target);
    // `type` is "SCALAR", "VEC3", …; `more` are further properties of the accessor. Returns its
    // index.
    template <class Element>
    std::size_t Add(std::span<const Element> elements, GltfComponent component, const char* type,
                    const nlohmann::json& more);
    // Ends the last view.
    void Finish();

    std::uint64_t ByteLength() const { return byteLength_; }
    const JsonList& Accessors() const { return accessors_; }
    const JsonList& Views() const { return views_; }
    void Write(text::ByteSink& out) const;

  private:
    std::size_t AddBytes(std::span<const std::byte> bytes, std::size_t count,
                         GltfComponent component, const char* type, const nlohmann::json& more);

    std::vector<std::span<const std::byte>> pieces_;  // each padded to four bytes
    std::uint64_t byteLength_ = 0;
    std::uint64_t viewStart_ = 0;
    GltfTarget target_ = GltfTarget::None;
    JsonList accessors_;
    JsonList views_;
};

template <class Element>
std::size_t GltfBuffer::Add(std::span<const Element> elements, GltfComponent component,
                            const char* type, const nlohmann::json& more) {
    return AddBytes(std::as_bytes(elements), elements.size(), component, type, more);
}

}  // namespace exporters
