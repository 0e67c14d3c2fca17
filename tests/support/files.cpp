#include "tests/support/files.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace support {

std::string ReadText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    if (!file.is_open() || file.bad()) throw std::runtime_error("cannot read " + path);
    return text.str();
}

}  // namespace support
