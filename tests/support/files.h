// The files that tests read.
#pragma once

#include <string>

namespace support {

// All bytes of a file. Throws std::runtime_error, which names the file, where it cannot be read.
std::string ReadText(const std::string& path);

}  // namespace support
