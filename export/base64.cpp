#include "export/base64.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace exporters {
namespace {

constexpr std::string_view kBase64Digits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// For each number of 12 bits its two digits.
constexpr auto kPairs = [] {
    std::array<std::array<char, 2>, 4096> pairs{};
    for (std::size_t bits = 0; bits < pairs.size(); ++bits)
        pairs[bits] = {kBase64Digits[bits >> 6U], kBase64Digits[bits & 63U]};
    return pairs;
}();

std::uint32_t ByteAt(std::string_view bytes, std::size_t index) {
    return index < bytes.size() ? static_cast<unsigned char>(bytes[index]) : 0;
}

}  // namespace

std::string Base64(std::string_view bytes) {
    std::string text(4 * ((bytes.size() + 2) / 3), '=');
    std::size_t to = 0;
    for (std::size_t from = 0; from < bytes.size(); from += 3) {
        const std::uint32_t bits =
            ByteAt(bytes, from) << 16U | ByteAt(bytes, from + 1) << 8U | ByteAt(bytes, from + 2);
        const std::array<char, 2>& first = kPairs[bits >> 12U];
        const std::array<char, 2>& second = kPairs[bits & 0xFFFU];
        text[to++] = first[0];
        text[to++] = first[1];
        if (from + 1 < bytes.size()) text[to] = second[0];
        ++to;
        if (from + 2 < bytes.size()) text[to] = second[1];
        ++to;
    }
    return text;
}

}  // namespace exporters
