#include "app/json_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>

#include "app/text.h"

namespace app {
namespace {

// What stands in quotes as it is: most names.
bool IsPlain(wchar_t character) {
    return character >= L' ' && character < L'\x7F' && character != L'"' && character != L'\\';
}

}  // namespace

void AppendJsonNumber(std::string& out, double number) {
    if (!std::isfinite(number)) {
        out += std::isnan(number) ? "\"nan\"" : number > 0 ? "\"inf\"" : "\"-inf\"";
        return;
    }
    char digits[32];  // the shortest form of a double takes 24 at most
    const char* end = std::to_chars(digits, digits + sizeof(digits), number).ptr;
    const std::string_view text(digits, static_cast<std::size_t>(end - digits));
    out += text;
    if (text.find_first_of(".e") == std::string_view::npos) out += ".0";
}

void AppendJsonString(std::string& out, std::wstring_view text) {
    if (std::all_of(text.begin(), text.end(), IsPlain)) {
        out += '"';
        for (const wchar_t character : text)
            out += static_cast<char>(character);
        out += '"';
        return;
    }
    out += nlohmann::json(EncodeUtf8(text)).dump();
}

}  // namespace app
