#include "tests/support/gzip_data.h"

#include <stdexcept>
#include <zlib.h>

namespace support {

std::string PackGzip(std::string_view text) {
    constexpr int kLargestWindowWithGzipHeader = 15 + 16;
    z_stream stream{};
    if (deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, kLargestWindowWithGzipHeader, 8,
                     Z_DEFAULT_STRATEGY) != Z_OK)
        throw std::runtime_error("cannot start to pack");
    std::string packed(deflateBound(&stream, text.size()), '\0');
    std::string in(text);
    stream.next_in = reinterpret_cast<Bytef*>(in.data());
    stream.avail_in = static_cast<uInt>(in.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    const int result = deflate(&stream, Z_FINISH);
    packed.resize(packed.size() - stream.avail_out);
    deflateEnd(&stream);
    if (result != Z_STREAM_END) throw std::runtime_error("cannot pack");
    return packed;
}

}  // namespace support
