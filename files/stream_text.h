// Reads a whole stream, such as the standard input, into memory.
#pragma once

#include <cstdint>
#include <string>

#include "text/storage.h"

namespace files {

struct StreamText {
    std::string text;     // empty if the stream could not be read
    std::string problem;  // why it could not be read, in plain words; empty if it could
};

// Reads the file with this descriptor from its current position to its end. Waits for data where a
// pipe or a terminal has none yet. Refuses `limit` bytes or more. Throws std::bad_alloc when memory
// runs out.
StreamText ReadStream(int file, std::uint64_t limit = text::kTooLarge);

}  // namespace files
