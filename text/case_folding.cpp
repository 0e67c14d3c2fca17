#include "text/case_folding.h"

#include <clocale>
#include <cwctype>
#include <locale.h>  // NOLINT(modernize-deprecated-headers): newlocale is POSIX

#include "text/wide_text.h"

namespace text {
namespace {

locale_t FoldingLocale() {
    // If the system does not have C.UTF-8, letters beyond ASCII are not changed.
    static const locale_t folding = [] {
        const locale_t found = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
        return found ? found : newlocale(LC_CTYPE_MASK, "C", nullptr);
    }();
    return folding;
}

}  // namespace

std::wstring FoldCase(std::string_view name) {
    std::wstring folded = DecodeUtf8(name);
    for (wchar_t& character : folded)
        // The character is converted to upper case and back to lower case. Two lower-case letters
        // with the same upper-case letter become equal in this way.
        character = static_cast<wchar_t>(towlower_l(
            towupper_l(static_cast<std::wint_t>(character), FoldingLocale()), FoldingLocale()));
    return folded;
}

}  // namespace text
