#include "survey/high_bytes.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>

#include "threads/for_each.h"
#include "threads/thread_count.h"

namespace survey {
namespace {

constexpr std::size_t kSearchedBytes = std::size_t{256} << 10U;
// Searching takes less than a tenth of the time that reading takes, which threads::CountFor
// expects.
constexpr std::size_t kSearchesFaster = 10;

}  // namespace

// Most texts have no such byte and are searched to their end, so 64 bytes are examined at a time.
bool HasHighByte(std::string_view text) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080;
    constexpr std::size_t kAtOnce = 64;
    std::size_t at = 0;
    for (; at + kAtOnce <= text.size(); at += kAtOnce) {
        std::uint64_t words[kAtOnce / sizeof(std::uint64_t)];
        std::memcpy(words, text.data() + at, kAtOnce);
        std::uint64_t all = 0;
        for (const std::uint64_t word : words)
            all |= word;
        if ((all & kHighBits) != 0) return true;
    }
    return std::any_of(text.begin() + static_cast<std::ptrdiff_t>(at), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

bool HasHighByteInParts(std::string_view text, std::size_t threads) {
    std::atomic<bool> found = false;
    const std::size_t parts = (text.size() + kSearchedBytes - 1) / kSearchedBytes;
    threads::ForEach(parts, threads, [&](std::size_t part) {
        if (!found && HasHighByte(text.substr(part * kSearchedBytes, kSearchedBytes))) found = true;
    });
    return found;
}

std::size_t HighByteThreads(std::size_t bytes) {
    return threads::CountFor(bytes / kSearchesFaster);
}

}  // namespace survey
