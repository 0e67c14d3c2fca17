#include "acclaim/amc_rows.h"

#include <algorithm>
#include <atomic>
#include <cstdint>

#include "textio/row_reader.h"
#include "threads/for_each.h"

namespace {

constexpr std::ptrdiff_t kCountedBytes = std::ptrdiff_t{1} << 20;
// A number with so many digits fits into an int.
constexpr std::ptrdiff_t kSafeDigits = 9;

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

const char* SkipBlanks(const char* at) {
    while (IsBlank(*at))
        ++at;
    return at;
}

// Reads a line with nothing but a frame number. Returns the start of the next line, or null.
const char* ReadFrameNumber(const char* at, double& number) {
    const char* const first = at = SkipBlanks(at);
    std::int32_t value = 0;
    for (; *at >= '0' && *at <= '9'; ++at) {
        if (at - first == kSafeDigits) return nullptr;
        value = value * 10 + (*at - '0');
    }
    if (at == first) return nullptr;
    at = SkipBlanks(at);
    if (*at != '\n') return nullptr;
    number = value;
    return at + 1;
}

// Returns the end of the name. Returns null if there is none, if it begins a comment, or if it has
// a character that separates tokens.
const char* SkipName(const char* at) {
    const char* const first = at = SkipBlanks(at);
    for (; !IsBlank(*at); ++at)
        if (*at == '\n' || *at == '\0' || *at == ',' || *at == '(' || *at == ')') return nullptr;
    return *first == '#' || at == first ? nullptr : at;
}

}  // namespace

void AmcRowReader::Add(const std::vector<Value>& values, const Converter& converter) {
    bones_.push_back({numbers_.size(), values.size()});
    converter_ = &converter;
    for (const Value& value : values) {
        numbers_.push_back(value.numbers);
        if (converter.Changes(*value.channel)) converted_.push_back(value);
    }
}

const char* AmcRowReader::ReadRow(const char* at, const char* last,
                                  std::size_t row) const noexcept {
    at = ReadFrameNumber(at, times_[row]);
    for (const Bone& bone : bones_) {
        if (at != nullptr) at = SkipName(at);
        if (at == nullptr) return nullptr;
        at = textio::ReadRow(at, last, {numbers_.data() + bone.firstValue, bone.values}, row);
    }
    if (at == nullptr) return nullptr;
    for (const Value& value : converted_)
        value.numbers[row] = converter_->Convert(*value.channel, value.numbers[row]);
    return at;
}

std::size_t CountRows(const char* first, const char* last, std::size_t lines, std::size_t threads) {
    std::atomic<std::size_t> feeds = 0;
    const auto parts = static_cast<std::size_t>((last - first + kCountedBytes - 1) / kCountedBytes);
    threads::ForEach(parts, threads, [&](std::size_t part) {
        const char* const begin = first + static_cast<std::ptrdiff_t>(part) * kCountedBytes;
        const char* const end = begin + std::min(last - begin, kCountedBytes);
        feeds += static_cast<std::size_t>(std::count(begin, end, '\n'));
    });
    // The last line may have no line feed.
    return (feeds + 1) / lines;
}
