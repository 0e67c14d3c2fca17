// Unpacks gzip data in memory.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "text/api.h"

namespace text {

// Whether the bytes begin as gzip data do.
ZKMOCAP_API bool IsGzip(std::string_view bytes);

struct Unpacked {
    std::string text;     // empty if the data could not be unpacked
    std::string problem;  // why they could not, in plain words; empty if they could
};

// Unpacks gzip data of one or several members, which may be followed by zero bytes. Data that are
// cut off, that are damaged, or that are followed by other bytes give a problem, and so do data
// that unpack to `limit` bytes or more. Needs memory in proportion to the data and to the part of
// the text that was unpacked. Throws std::bad_alloc when memory runs out.
ZKMOCAP_API Unpacked UnpackGzip(std::string_view bytes, std::uint64_t limit);

}  // namespace text
