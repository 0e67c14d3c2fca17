#include "survey/text_kind.h"

#include <algorithm>
#include <string>

#include "survey/number_word.h"
#include "survey/source_text.h"
#include "textio/ascii.h"

namespace survey {
namespace {

// Only the first bytes of the text are examined, at most this many.
constexpr std::size_t kExaminedBytes = 4096;

// The bytes with which a text or a line of a certain kind begins.
struct Beginning {
    std::string_view bytes;
    std::string_view kind;
};
using namespace std::string_view_literals;
constexpr Beginning kFileBeginnings[] = {
    {"\x1F\x8B"sv, "gzip data"},
    {"PK\x03\x04"sv, "a zip archive"},
    {"BZh"sv, "bzip2 data"},
    {"\xFD\x37zXZ"sv, "xz data"},
    {"\x28\xB5\x2F\xFD"sv, "zstd data"},
    {"7z\xBC\xAF"sv, "a 7z archive"},
    {"Rar!"sv, "a RAR archive"},
    {"\x7F\x45LF"sv, "a program"},
    {"%PDF"sv, "a PDF document"},
    {"Kaydara FBX"sv, "an FBX file"},
    {"glTF"sv, "a glTF file"},
    {R"({\rtf)"sv, "an RTF document"},
};

// A line that begins with one of these words shows the kind of the text. They are in lower case.
constexpr Beginning kLineBeginnings[] = {
    {":version", "an Acclaim skeleton (ASF)"},        {":bonedata", "an Acclaim skeleton (ASF)"},
    {":hierarchy", "an Acclaim skeleton (ASF)"},      {":units", "an Acclaim skeleton (ASF)"},
    {":fully-specified", "an Acclaim motion (AMC)"},  {":degrees", "an Acclaim motion (AMC)"},
    {":radians", "an Acclaim motion (AMC)"},          {"hierarchy", "a BVH file"},
    {"version https://git-lfs", "a git LFS pointer"},
};

bool IsBinary(std::string_view text) {
    return std::any_of(text.begin(), text.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x20 && !IsWhite(c) && c != '\x1A';
    });
}

// Whether all words are numbers.
bool AreNumbers(std::string_view text) {
    const char* const separators = " \t\r\n\v\f,;";
    std::size_t at = text.find_first_not_of(separators);
    while (at != std::string_view::npos) {
        const std::size_t end = text.find_first_of(separators, at);
        if (end == std::string_view::npos)
            return true;  // the last word may be cut off, so it is not read
        double value = 0.0;
        const std::string word(text.substr(at, end - at));
        if (ClassifyWord(word, value) != WordKind::Number) return false;
        at = text.find_first_not_of(separators, end);
    }
    return true;
}

// Returns the kind of the first line that begins with one of kLineBeginnings. The result is empty
// if there is no such line. `lower` is the text in lower case.
std::string_view LineKind(std::string_view lower) {
    for (std::size_t line = 0; line != std::string_view::npos;) {
        const std::size_t first = lower.find_first_not_of(" \t\r\n", line);
        if (first == std::string_view::npos) break;
        for (const Beginning& known : kLineBeginnings)
            if (lower.substr(first).starts_with(known.bytes)) return known.kind;
        line = lower.find_first_of("\r\n", first);
    }
    return {};
}

}  // namespace

std::string_view DescribeText(std::string_view text) {
    for (const Beginning& known : kFileBeginnings)
        if (text.starts_with(known.bytes)) return known.kind;
    const std::string_view start = text.substr(0, kExaminedBytes);
    if (IsBinary(start)) return "binary data";
    std::string lower(start);
    std::transform(lower.begin(), lower.end(), lower.begin(), textio::ToLower);
    const std::size_t first = lower.find_first_not_of(" \t\r\n");
    const std::string_view trimmed =
        std::string_view(lower).substr(first == std::string::npos ? 0 : first);
    if (trimmed.starts_with("<!doctype html") || trimmed.starts_with("<html"))
        return "a web page (HTML)";
    if (trimmed.starts_with("<")) return "XML or HTML";
    if (trimmed.starts_with("{") || trimmed.starts_with("[")) return "JSON";
    if (const std::string_view kind = LineKind(lower); !kind.empty()) return kind;
    if (AreNumbers(start)) return "numbers alone";
    return "text of another kind";
}

}  // namespace survey
