// Packs texts, for the tests of readers of gzip data.
#pragma once

#include <string>
#include <string_view>

namespace support {

// Returns the text as gzip data of one member.
std::string PackGzip(std::string_view text);

}  // namespace support
