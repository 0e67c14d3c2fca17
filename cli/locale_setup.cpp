#include "cli/locale_setup.h"

#include <clocale>
#include <langinfo.h>
#include <string_view>

namespace cli {

void SetCharacterLocale() {
    const bool known = std::setlocale(LC_CTYPE, "") != nullptr;
    // The "C" locale knows no characters beyond ASCII.
    const bool plain = std::string_view(nl_langinfo(CODESET)) == "ANSI_X3.4-1968";
    if (!known || plain) std::setlocale(LC_CTYPE, "C.UTF-8");
}

}  // namespace cli
