#include "export/number_deflate.h"

#include <cstddef>
#include <new>
#include <zlib.h>

namespace exporters {
namespace {

// Only bytes that are several times as long as the piece that decides are worth that trial.
constexpr std::size_t kPiece = 4096;
constexpr std::size_t kWorthTrying = 4 * kPiece;
constexpr int kWindow = 15;  // zlib's defaults
constexpr int kMemory = 8;

std::string Deflate(std::string_view bytes, int strategy) {
    z_stream stream{};
    if (deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, kWindow, kMemory, strategy) != Z_OK)
        throw std::bad_alloc();
    std::string packed(deflateBound(&stream, static_cast<uLong>(bytes.size())), '\0');
    stream.next_in = reinterpret_cast<z_const Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    const int status = deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    // The memory is large enough, so this happens only if zlib itself has none.
    if (status != Z_STREAM_END) throw std::bad_alloc();
    return packed;
}

int StrategyFor(std::string_view bytes) {
    if (bytes.size() < kWorthTrying) return Z_DEFAULT_STRATEGY;
    const std::string_view piece = bytes.substr((bytes.size() - kPiece) / 2, kPiece);
    const std::size_t found = Deflate(piece, Z_DEFAULT_STRATEGY).size();
    const std::size_t counted = Deflate(piece, Z_HUFFMAN_ONLY).size();
    return found < counted ? Z_DEFAULT_STRATEGY : Z_HUFFMAN_ONLY;
}

}  // namespace

std::string DeflateNumbers(std::string_view bytes) {
    return Deflate(bytes, StrategyFor(bytes));
}

}  // namespace exporters
