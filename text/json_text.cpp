#include "text/json_text.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>

#include "text/to_chars.h"
#include "text/utf8.h"
#include "text/wide_text.h"

namespace text {
namespace {

// Returns the two-character escape that JSON has for some characters. Empty for all others.
std::string_view EscapeOf(wchar_t character) {
    switch (character) {
        case L'"':
            return R"(\")";
        case L'\\':
            return R"(\\)";
        case L'\b':
            return R"(\b)";
        case L'\f':
            return R"(\f)";
        case L'\n':
            return R"(\n)";
        case L'\r':
            return R"(\r)";
        case L'\t':
            return R"(\t)";
        default:
            return {};
    }
}

}  // namespace

void AppendJsonNumber(std::string& out, double number) {
    if (!std::isfinite(number)) {
        out += std::isnan(number) ? "\"nan\"" : number > 0 ? "\"inf\"" : "\"-inf\"";
        return;
    }
    char digits[32];  // the shortest text of a double has at most 24 characters
    const char* end = to_chars(digits, digits + sizeof(digits), number).ptr;
    const std::string_view text(digits, static_cast<std::size_t>(end - digits));
    out += text;
    if (text.find_first_of(".e") == std::string_view::npos) out += ".0";
}

void AppendJsonString(std::string& out, std::wstring_view text) {
    out += '"';
    for (const wchar_t character : text) {
        const std::string_view escape = EscapeOf(character);
        if (!escape.empty())
            out += escape;
        else if (character >= L' ' && character < L'\x7F')
            out += static_cast<char>(character);
        else if (character >= L'\0' && character < L' ')
            out += fmt::format("\\u{:04x}", static_cast<unsigned>(character));
        else
            AppendUtf8(out, static_cast<char32_t>(character));
    }
    out += '"';
}

void AppendJsonString(std::string& out, std::string_view utf8) {
    AppendJsonString(out, DecodeUtf8(utf8));
}

}  // namespace text
