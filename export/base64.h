// Writes bytes as text (RFC 4648, section 4).
// Internal to export/.
#pragma once

#include <string>
#include <string_view>

namespace exporters {

// Returns the text of all bytes, padded with "=". Throws std::bad_alloc if there is no memory.
std::string Base64(std::string_view bytes);

}  // namespace exporters
