// Compresses arrays of numbers.
// Internal to export/.
#pragma once

#include <string>
#include <string_view>

namespace exporters {

// Returns the bytes as a stream of RFC 1950. It is meant for curves: the keys of a smooth or a
// rounded one repeat, which zlib's level 1 finds. The keys of a noisy one do not, so it only counts
// how often each byte occurs, which takes a third of the time. A piece of the bytes decides.
// Throws std::bad_alloc if there is no memory.
std::string DeflateNumbers(std::string_view bytes);

}  // namespace exporters
