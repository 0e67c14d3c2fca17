// Unpacks gzip data in memory.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace text {

// Whether the bytes begin as gzip data do.
bool IsGzip(std::string_view bytes);

struct Unpacked {
    std::string text;     // empty if the data could not be unpacked
    std::string problem;  // why they could not, in plain words; empty if they could
};

// Unpacks gzip data of one or several members, which may be followed by zero bytes. Data that are
// cut off, that are damaged, or that are followed by other bytes give a problem, and so do data
// that unpack to `limit` bytes or more. The memory is in proportion to the data and to the text,
// and only to the data if the text is too large. Throws std::bad_alloc when memory runs out.
Unpacked UnpackGzip(std::string_view bytes, std::uint64_t limit);

}  // namespace text
