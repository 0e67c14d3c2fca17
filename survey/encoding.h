// Bytes of other encodings as UTF-8.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace survey {

enum class ByteOrder : std::uint8_t { Little, Big };

// Whether the bytes are UTF-16: by a mark, or because every second one of the first is zero.
std::optional<ByteOrder> FindUtf16(std::string_view bytes);

// Without the mark. What is no character becomes U+FFFD.
std::string Utf16ToUtf8(std::string_view bytes, ByteOrder order);

// Whether iconv can convert from the encoding of that name.
bool IsKnownEncoding(const std::string& name);

// From an encoding that IsKnownEncoding. A byte that is none of its characters becomes U+FFFD.
std::string ConvertEncoding(std::string_view bytes, const std::string& name);

// From Windows-1252. Its five bytes without a character become U+FFFD.
std::string Windows1252ToUtf8(std::string_view bytes);

}  // namespace survey
