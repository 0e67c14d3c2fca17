#include "cli/locale_setup.h"

#include <clocale>
#include <langinfo.h>
#include <string_view>

namespace cli {

void SetCharacterLocale() {
    const bool known = std::setlocale(LC_CTYPE, "") != nullptr;
    // The "C" locale has only ASCII characters; glibc calls its character set by this name.
    const bool isAscii = std::string_view(nl_langinfo(CODESET)) == "ANSI_X3.4-1968";
    if (!known || isAscii) std::setlocale(LC_CTYPE, "C.UTF-8");
}

}  // namespace cli
