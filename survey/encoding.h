// Converts other encodings to UTF-8.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace survey {

enum class ByteOrder : std::uint8_t { Little, Big };

// The byte order, if the bytes are UTF-16: they have a byte-order mark, or every second one of the
// first bytes is zero. Otherwise nullopt.
std::optional<ByteOrder> FindUtf16(std::string_view bytes);

// Leaves out the byte-order mark. Units that are no character become U+FFFD.
std::string Utf16ToUtf8(std::string_view bytes, ByteOrder order);

// Whether iconv can convert from the encoding of that name.
bool IsKnownEncoding(const std::string& name);

// Converts from the encoding `name`. Bytes that are not valid in it become U+FFFD. The result is
// empty unless IsKnownEncoding(name).
std::string ConvertEncoding(std::string_view bytes, const std::string& name);

// The five bytes that have no character in Windows-1252 become U+FFFD.
std::string Windows1252ToUtf8(std::string_view bytes);

}  // namespace survey
