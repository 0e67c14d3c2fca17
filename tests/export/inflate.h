// Inflates what exporters have compressed.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <zlib.h>

namespace exported {

// Inflates a stream of RFC 1951, which has no header, to `size` bytes at most. Adds a failure to
// the test if the stream is not whole.
inline std::string Inflate(std::string packed, std::size_t size) {
    z_stream stream{};
    EXPECT_EQ(inflateInit2(&stream, -15), Z_OK);
    std::string bytes(size + 1, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(bytes.data());
    stream.avail_out = static_cast<uInt>(bytes.size());
    const int status = inflate(&stream, Z_FINISH);
    bytes.resize(stream.total_out);
    inflateEnd(&stream);
    EXPECT_EQ(status, Z_STREAM_END);
    return bytes;
}

}  // namespace exported
