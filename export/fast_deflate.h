// Compresses bytes on several threads.
// Internal to export/.
#pragma once

#include <string>
#include <string_view>

namespace exporters {

// Returns the bytes as one stream of RFC 1951, compressed at zlib's level 1 with the strategy
// Z_RLE, which only looks for repeated bytes: in the byte planes of a captured motion there is
// little else to find, and it takes a third of the time. Noise is stored as it is. The bytes are
// divided into pieces of a fixed size, so the result does not depend on the number of threads.
// Throws std::bad_alloc if there is no memory.
std::string FastDeflate(std::string_view bytes);

}  // namespace exporters
