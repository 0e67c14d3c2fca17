#include "export/number_deflate.h"

#include <cstddef>
#include <new>
#include <zlib.h>

namespace exporters {
namespace {

constexpr std::size_t kPiece = 4096;
// Only bytes that are several times as long as the piece are worth a trial.
constexpr std::size_t kWorthTrying = 4 * kPiece;
constexpr int kWindow = 15;  // zlib's defaults
constexpr int kMemory = 8;

}  // namespace

struct NumberDeflater::Stream {
    z_stream zlib{};
};

NumberDeflater::NumberDeflater(Deflation deflation) : stream_(std::make_unique<Stream>()) {
    const int strategy = deflation == Deflation::Counts ? Z_HUFFMAN_ONLY : Z_DEFAULT_STRATEGY;
    if (deflateInit2(&stream_->zlib, Z_BEST_SPEED, Z_DEFLATED, kWindow, kMemory, strategy) != Z_OK)
        throw std::bad_alloc();
}

NumberDeflater::~NumberDeflater() {
    deflateEnd(&stream_->zlib);
}

std::string NumberDeflater::Deflate(std::string_view bytes) {
    z_stream& zlib = stream_->zlib;
    deflateReset(&zlib);
    std::string packed(deflateBound(&zlib, static_cast<uLong>(bytes.size())), '\0');
    zlib.next_in = reinterpret_cast<z_const Bytef*>(const_cast<char*>(bytes.data()));
    zlib.avail_in = static_cast<uInt>(bytes.size());
    zlib.next_out = reinterpret_cast<Bytef*>(packed.data());
    zlib.avail_out = static_cast<uInt>(packed.size());
    // The memory is large enough, so this fails only if zlib itself has none.
    if (deflate(&zlib, Z_FINISH) != Z_STREAM_END) throw std::bad_alloc();
    packed.resize(zlib.total_out);
    packed.shrink_to_fit();
    return packed;
}

Deflation BetterDeflation(std::string_view bytes) {
    const std::size_t repeats = NumberDeflater(Deflation::Repeats).Deflate(bytes).size();
    const std::size_t counts = NumberDeflater(Deflation::Counts).Deflate(bytes).size();
    return repeats < counts ? Deflation::Repeats : Deflation::Counts;
}

std::string DeflateNumbers(std::string_view bytes) {
    const bool isTried = bytes.size() >= kWorthTrying;
    const Deflation deflation =
        isTried ? BetterDeflation(bytes.substr((bytes.size() - kPiece) / 2, kPiece))
                : Deflation::Repeats;
    return NumberDeflater(deflation).Deflate(bytes);
}

}  // namespace exporters
