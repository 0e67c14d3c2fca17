#include "text/byte_sink.h"

namespace text {

std::uint64_t ByteSink::Skip(std::uint64_t) {
    throw WriteError("no bytes can be left out here");
}

void ByteSink::WriteAt(std::uint64_t, std::string_view) {
    throw WriteError("no bytes can be left out here");
}

std::uint64_t StringSink::Skip(std::uint64_t size) {
    const std::uint64_t offset = bytes_.size();
    bytes_.append(static_cast<std::size_t>(size), '\0');
    return offset;
}

void StringSink::WriteAt(std::uint64_t offset, std::string_view bytes) {
    bytes_.replace(static_cast<std::size_t>(offset), bytes.size(), bytes);
}

}  // namespace text
