#include "survey/encoding.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <iconv.h>

#include "text/utf8.h"

namespace survey {
namespace {

// The number of 16-bit units that BeginsWithAscii examines. It is high enough to tell UTF-16 from
// another text that happens to have a zero byte.
constexpr std::size_t kExaminedUnits = 8;

unsigned Byte(std::string_view bytes, std::size_t index) {
    return static_cast<unsigned char>(bytes[index]);
}

// The 16-bit unit with this index, counted from 0.
unsigned Unit(std::string_view bytes, std::size_t index, ByteOrder order) {
    const unsigned first = Byte(bytes, 2 * index);
    const unsigned second = Byte(bytes, 2 * index + 1);
    return order == ByteOrder::Little ? first | second << 8U : first << 8U | second;
}

// Whether the first 16-bit units, read in this byte order, are all ASCII characters but not NUL.
bool BeginsWithAscii(std::string_view bytes, ByteOrder order) {
    const std::size_t units = std::min(bytes.size() / 2, kExaminedUnits);
    if (units < 2) return false;
    for (std::size_t index = 0; index < units; ++index) {
        const unsigned unit = Unit(bytes, index, order);
        if (unit == 0 || unit >= 0x80) return false;
    }
    return true;
}

class Converter {
  public:
    explicit Converter(const std::string& name)
        : handle_(iconv_open("UTF-8", name.c_str())),
          // iconv_open returns the address -1 if it fails.
          isOpen_(reinterpret_cast<std::intptr_t>(handle_) != -1) {}
    ~Converter() {
        if (IsOpen()) iconv_close(handle_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool IsOpen() const { return isOpen_; }

    // Converts the bytes before the first byte that is not valid, and appends the result to `out`.
    // Returns the bytes that were not converted. The first of them is the byte that is not valid.
    std::string_view Convert(std::string_view bytes, std::string& out) {
        std::array<char, 4096> buffer{};
        // iconv asks for a pointer to non-const, but does not write through it.
        char* from =
            const_cast<char*>(bytes.data());  // NOLINT(cppcoreguidelines-pro-type-const-cast)
        std::size_t left = bytes.size();
        while (left > 0) {
            char* to = buffer.data();
            std::size_t free = buffer.size();
            const std::size_t result = iconv(handle_, &from, &left, &to, &free);
            const int error = errno;
            out.append(buffer.data(), buffer.size() - free);
            if (result == static_cast<std::size_t>(-1) && error != E2BIG) break;
        }
        return bytes.substr(bytes.size() - left);
    }

  private:
    iconv_t handle_;
    bool isOpen_;
};

// The characters that the bytes 0x80 to 0x9F stand for, as in the Unicode Consortium's table
// CP1252. A 0 means that the byte has no character.
constexpr std::array<char32_t, 32> kWindows1252 = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

}  // namespace

std::optional<ByteOrder> FindUtf16(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE")) return ByteOrder::Little;
    if (bytes.starts_with("\xFE\xFF")) return ByteOrder::Big;
    for (const ByteOrder order : {ByteOrder::Little, ByteOrder::Big})
        if (BeginsWithAscii(bytes, order)) return order;
    return std::nullopt;
}

std::string Utf16ToUtf8(std::string_view bytes, ByteOrder order) {
    std::string out;
    out.reserve(bytes.size() / 2 + 2);
    const std::size_t units = bytes.size() / 2;
    for (std::size_t index = 0; index < units; ++index) {
        char32_t character = Unit(bytes, index, order);
        if (index == 0 && character == 0xFEFF) continue;
        const bool isHigh = character >= 0xD800 && character < 0xDC00;
        const unsigned next = isHigh && index + 1 < units ? Unit(bytes, index + 1, order) : 0;
        if (next >= 0xDC00 && next < 0xE000) {
            character = 0x10000 + ((character - 0xD800) << 10U) + (next - 0xDC00);
            ++index;
        }
        text::AppendUtf8(out, character);
    }
    return out;
}

bool IsKnownEncoding(const std::string& name) {
    return Converter(name).IsOpen();
}

std::string ConvertEncoding(std::string_view bytes, const std::string& name) {
    Converter converter(name);
    std::string out;
    while (converter.IsOpen()) {
        bytes = converter.Convert(bytes, out);
        if (bytes.empty()) break;
        text::AppendUtf8(out, text::kReplacement);
        bytes.remove_prefix(1);
    }
    return out;
}

std::string Windows1252ToUtf8(std::string_view bytes) {
    std::string out;
    for (const char c : bytes) {
        char32_t character = static_cast<unsigned char>(c);
        if (character >= 0x80 && character < 0xA0) {
            character = kWindows1252[character - 0x80];
            if (character == 0) character = text::kReplacement;
        }
        text::AppendUtf8(out, character);
    }
    return out;
}

}  // namespace survey
