// Compresses arrays of numbers.
// Internal to export/.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace exporters {

// What a compressor looks for.
enum class Deflation : unsigned char {
    Repeats,  // bytes that repeat, as in smooth and in rounded curves
    // Only how often each byte occurs. Noisy curves do not repeat, and this takes a third of the
    // time.
    Counts,
};

// Returns what makes these bytes shorter. A piece of the numbers is enough.
Deflation BetterDeflation(std::string_view bytes);

// Compresses one array after the other, at zlib's level 1. It is made for a thread, which uses its
// memory for all of them. Throws std::bad_alloc if there is no memory.
class NumberDeflater {
  public:
    explicit NumberDeflater(Deflation deflation);
    ~NumberDeflater();
    NumberDeflater(const NumberDeflater&) = delete;
    NumberDeflater& operator=(const NumberDeflater&) = delete;

    // Returns the bytes as a stream of RFC 1950.
    std::string Deflate(std::string_view bytes);

  private:
    struct Stream;
    std::unique_ptr<Stream> stream_;
};

// Compresses one array, in the better of the two ways for the piece in its middle.
std::string DeflateNumbers(std::string_view bytes);

}  // namespace exporters
