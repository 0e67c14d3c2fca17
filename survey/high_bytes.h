// Searches a text for bytes above 127.
#pragma once

#include <cstddef>
#include <string_view>

namespace survey {

// Whether the text has a byte above 127.
bool HasHighByte(std::string_view text);

// Returns what HasHighByte returns. Searches on `threads` threads, the calling one included.
bool HasHighByteInParts(std::string_view text, std::size_t threads);

// On how many threads to search a text of so many bytes.
std::size_t HighByteThreads(std::size_t bytes);

}  // namespace survey
