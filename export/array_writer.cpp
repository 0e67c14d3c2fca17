#include "export/array_writer.h"

#include <algorithm>
#include <bit>
#include <fmt/format.h>
#include <vector>

#include "export/crc32.h"
#include "text/wide_text.h"

namespace exporters {
namespace {

// Numbers and characters are written as they are in memory. The headers declare them as
// little-endian ("<").
static_assert(std::endian::native == std::endian::little && sizeof(wchar_t) == 4);

// Returns the header of an array, with its type and shape. Blanks are added, so that the length of
// the header is a multiple of 64 bytes.
std::string NpyHeader(std::string_view type, std::string_view shape) {
    std::string text =
        fmt::format("{{'descr': '{}', 'fortran_order': False, 'shape': {}, }}", type, shape);
    constexpr std::size_t kPrefixSize = 10;  // signature, version and length
    text.append(63 - (kPrefixSize + text.size()) % 64, ' ');
    text += '\n';
    std::string header("\x93NUMPY\x01\x00", 8);
    header += static_cast<char>(text.size() & 0xFF);
    header += static_cast<char>(text.size() >> 8);
    return header + text;
}

std::string FileOf(const std::string& name) {
    return name + ".npy";
}

}  // namespace

LaterArray::LaterArray(text::ByteSink& out, ZipWriter& zip, const std::string& file,
                       const std::string& header, std::uint64_t size)
    : out_(out),
      zip_(zip),
      later_(zip.BeginLater(file, header.size() + size)),
      end_(later_.contents + header.size()),
      crc_(Crc32(0, header)) {
    out_.WriteAt(later_.contents, header);
}

void LaterArray::Append(std::string_view elements, std::uint32_t crc) {
    out_.WriteAt(end_, elements);
    end_ += elements.size();
    crc_ = JoinCrc32(crc_, crc, elements.size());
}

void ArrayWriter::Add(const std::string& name, std::string_view type, std::string_view shape,
                      std::string_view elements) {
    const std::string header = NpyHeader(type, shape);
    if (compress_) return zip_.AddCompressed(FileOf(name), header, elements);
    const std::uint32_t crc = Crc32(Crc32(0, header), elements);
    zip_.BeginMember(FileOf(name), std::uint64_t{header.size()} + elements.size(), crc);
    zip_.Write(header);
    zip_.Write(elements);
}

void ArrayWriter::AddText(const std::string& name, const std::string& utf8) {
    std::wstring text = text::DecodeUtf8(utf8);
    std::transform(text.begin(), text.end(), text.begin(), ValidCharacter);
    const std::vector<wchar_t> characters(text.begin(), text.end());
    Add(name, fmt::format("<U{}", std::max<std::size_t>(text.size(), 1)), "()",
        text.empty() ? std::string_view("\0\0\0\0", 4) : BytesOf(characters));
}

LaterArray ArrayWriter::AddLater(const std::string& name, std::string_view type,
                                 std::string_view shape, std::uint64_t size) {
    return {out_, zip_, FileOf(name), NpyHeader(type, shape), size};
}

wchar_t ValidCharacter(wchar_t character) {
    return text::IsCharacter(character) ? character : L'\xFFFD';
}

}  // namespace exporters
