// Converts other encodings to UTF-8.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace survey {

enum class ByteOrder : std::uint8_t { Little, Big };

// Returns the byte order if the bytes look like UTF-16, and nullopt if they do not. Bytes look like
// UTF-16 if they begin with its byte-order mark, or if their first 16-bit units are all ASCII
// characters.
std::optional<ByteOrder> FindUtf16(std::string_view bytes);

// Leaves out the byte-order mark. A 16-bit unit that is no character (an unpaired surrogate)
// becomes U+FFFD. If the number of bytes is odd, the last byte is ignored.
std::string Utf16ToUtf8(std::string_view bytes, ByteOrder order);

// Whether iconv can convert from the encoding of that name.
bool IsKnownEncoding(const std::string& name);

// Converts from the encoding `name` to UTF-8. Bytes that are not valid in this encoding become
// U+FFFD. If IsKnownEncoding(name) is false, the result is empty.
std::string ConvertEncoding(std::string_view bytes, const std::string& name);

// The five bytes that have no character in Windows-1252 become U+FFFD.
std::string Windows1252ToUtf8(std::string_view bytes);

}  // namespace survey
