#include "export/fast_deflate.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <new>
#include <vector>
#include <zlib.h>

#include "export/run_parts.h"
#include "threads/thread_count.h"

namespace exporters {
namespace {

constexpr std::size_t kPiece = std::size_t{256} << 10U;
constexpr int kWithoutHeader = -15;  // a window of 32 KiB, and neither header nor check sum
constexpr int kMemory = 8;           // zlib's default

// Whether about all bytes are as frequent as the others, so that a Huffman code saves nothing. Only
// kSamples of the bytes are counted. In random bytes, the squares of the counts add up to a share
// of 1 + 256 / kSamples of what they would with exactly equal counts, give or take half a percent;
// where a code would save one percent, it is a tenth more.
bool IsNoise(std::string_view bytes) {
    constexpr std::size_t kSamples = 4096;
    constexpr double kLargest = 1.0 + 256.0 / kSamples + 0.03;
    if (bytes.size() < kSamples) return false;
    std::array<std::uint32_t, 256> counts{};
    const std::size_t step = bytes.size() / kSamples;
    for (std::size_t sample = 0; sample < kSamples; ++sample)
        ++counts[static_cast<unsigned char>(bytes[sample * step])];
    double squares = 0.0;
    for (const std::uint32_t count : counts)
        squares += static_cast<double>(count) * count;
    return squares * 256.0 < kLargest * kSamples * kSamples;
}

// Compresses one piece. A piece that is not the last one ends at a whole byte, so that the next one
// can follow.
std::string DeflatePiece(std::string_view bytes, bool isLast) {
    z_stream stream{};
    const int level = IsNoise(bytes) ? Z_NO_COMPRESSION : Z_BEST_SPEED;
    if (deflateInit2(&stream, level, Z_DEFLATED, kWithoutHeader, kMemory, Z_RLE) != Z_OK)
        throw std::bad_alloc();
    // The bound is for a finished stream; a flush adds a few bytes.
    std::string packed(deflateBound(&stream, static_cast<uLong>(bytes.size())) + 16, '\0');
    stream.next_in = reinterpret_cast<z_const Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    const int status = deflate(&stream, isLast ? Z_FINISH : Z_SYNC_FLUSH);
    const bool isWhole = stream.avail_in == 0 && status == (isLast ? Z_STREAM_END : Z_OK);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    // The memory is large enough, so this happens only if zlib itself has none.
    if (!isWhole) throw std::bad_alloc();
    return packed;
}

}  // namespace

std::string FastDeflate(std::string_view bytes) {
    const std::size_t count = std::max<std::size_t>(1, (bytes.size() + kPiece - 1) / kPiece);
    std::vector<std::string> pieces(count);
    std::atomic<std::size_t> next = 0;
    const std::size_t threads = std::min(count, threads::Most());
    RunParts(threads, [&](std::size_t) {
        for (std::size_t piece = next++; piece < count; piece = next++)
            pieces[piece] = DeflatePiece(bytes.substr(piece * kPiece, kPiece), piece + 1 == count);
    });
    std::size_t size = 0;
    for (const std::string& piece : pieces)
        size += piece.size();
    std::string packed;
    packed.reserve(size);
    for (const std::string& piece : pieces)
        packed += piece;
    return packed;
}

}  // namespace exporters
