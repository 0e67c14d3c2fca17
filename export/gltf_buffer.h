// Collects the binary buffer of a glTF file and the JSON lists that describe it.
// Internal to export/.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <span>
#include <string>
#include <vector>

#include "export/progress.h"
#include "text/byte_sink.h"

namespace exporters {

// A JSON array that is kept as text, so that a long list needs no tree of JSON values.
class JsonList {
  public:
    // Appends an element and returns its index, counted from 0.
    std::size_t Add(const nlohmann::json& element);
    // Appends an element that is already JSON text, and returns its index.
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

// The buffer refers to the elements that the caller adds and does not copy them. The caller must
// keep the elements unchanged until the last call of Write.
class GltfBuffer {
  public:
    // Ends the current buffer view and begins a new one, to which the next accessors belong.
    void BeginView(GltfTarget target);
    // Adds an accessor to the current view and returns its index. `type` is "SCALAR", "VEC3", ...;
    // `more` holds further properties of the accessor.
    template <class Element>
    std::size_t Add(std::span<const Element> elements, GltfComponent component, const char* type,
                    const nlohmann::json& more);
    // Ends the last view. Must be called before Views().
    void Finish();

    // The size of the buffer in bytes.
    std::uint64_t ByteLength() const { return byteLength_; }
    const JsonList& Accessors() const { return accessors_; }
    const JsonList& Views() const { return views_; }
    // Writes the buffer. May be called several times.
    void Write(text::ByteSink& out, const Progress& progress) const;

  private:
    bool IsViewEmpty() const { return byteLength_ == viewStart_; }
    std::size_t AddBytes(std::span<const std::byte> bytes, std::size_t count,
                         GltfComponent component, const char* type, const nlohmann::json& more);

    std::vector<std::span<const std::byte>> pieces_;  // one for each accessor, without padding
    std::uint64_t byteLength_ = 0;
    std::uint64_t viewStart_ = 0;  // byte offset of the current view
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
