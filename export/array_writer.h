// Writes arrays of numbers and texts to a .npz file, which is a ZIP archive of .npy files.
// Internal to export/.
//
// The format is the one of https://numpy.org/doc/stable/reference/generated/numpy.lib.format.html,
// version 1.0.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

#include "export/zip_writer.h"
#include "text/byte_sink.h"

namespace exporters {

// The names of types in the header of an array.
constexpr std::string_view NpyType(double) {
    return "<f8";
}
constexpr std::string_view NpyType(float) {
    return "<f4";
}
constexpr std::string_view NpyType(std::int32_t) {
    return "<i4";
}
constexpr std::string_view NpyType(std::int64_t) {
    return "<i8";
}
// Truth values are stored as bytes, because a std::vector<bool> is no array.
constexpr std::string_view NpyType(std::uint8_t) {
    return "|b1";
}

// Returns the bytes of a std::vector or a LargeArray.
template <class Array>
std::string_view BytesOf(const Array& elements) {
    return {reinterpret_cast<const char*>(elements.data()),
            elements.size() * sizeof(*elements.data())};
}

// An array whose elements are written later, a piece after the other.
class LaterArray {
  public:
    // `size` is in bytes. Keeps references to the sink and to the archive.
    LaterArray(text::ByteSink& out, ZipWriter& zip, const std::string& file,
               const std::string& header, std::uint64_t size);

    // Appends elements. `crc` is their CRC-32, which other threads may have computed.
    void Append(std::string_view elements, std::uint32_t crc);
    // Call it after the last element.
    void Finish() { zip_.EndLater(later_, crc_); }

  private:
    text::ByteSink& out_;
    ZipWriter& zip_;
    ZipWriter::Later later_;
    std::uint64_t end_;  // byte offset in the sink, after the last element that was appended
    std::uint32_t crc_;
};

// Adds the arrays of one file.
class ArrayWriter {
  public:
    // Keeps a reference to the sink.
    ArrayWriter(text::ByteSink& out, bool compress) : out_(out), zip_(out), compress_(compress) {}

    // Adds an array. `type` and `shape` are those of its header; `elements` are its bytes.
    void Add(const std::string& name, std::string_view type, std::string_view shape,
             std::string_view elements);

    // Adds an array of numbers and frees their memory.
    template <class Array>
    void AddNumbers(const std::string& name, std::string_view shape, Array elements) {
        using Element = std::remove_cvref_t<decltype(*elements.data())>;
        Add(name, NpyType(Element()), shape, BytesOf(elements));
    }

    // Adds an array without dimensions that holds one text.
    void AddText(const std::string& name, const std::string& utf8);

    // Whether AddLater can be called: the sink can skip, and nothing is compressed.
    bool CanAddLater() const { return !compress_ && out_.CanSkip(); }
    // Leaves room for an array with `size` bytes of elements. The object must outlive the result.
    LaterArray AddLater(const std::string& name, std::string_view type, std::string_view shape,
                        std::uint64_t size);

    void Finish() { zip_.Finish(); }

  private:
    text::ByteSink& out_;
    ZipWriter zip_;
    bool compress_;
};

// Returns the character. If the code is no character, returns U+FFFD, because a reader cannot read
// an array with such a code.
wchar_t ValidCharacter(wchar_t character);

}  // namespace exporters
