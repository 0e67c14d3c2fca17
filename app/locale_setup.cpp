#include "app/locale_setup.h"

#include <clocale>
#include <langinfo.h>
#include <new>
#include <string_view>

namespace app {

void SetCharacterLocale() {
    const bool known = std::setlocale(LC_CTYPE, "") != nullptr;
    // The "C" locale knows no characters beyond ASCII.
    const bool plain = std::string_view(nl_langinfo(CODESET)) == "ANSI_X3.4-1968";
    if (!known || plain) std::setlocale(LC_CTYPE, "C.UTF-8");
}

Utf8Characters::Utf8Characters(bool applies) {
    if (!applies) return;
    utf8_ = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (!utf8_) throw std::bad_alloc();
    former_ = uselocale(utf8_);
}

Utf8Characters::~Utf8Characters() {
    if (!utf8_) return;
    uselocale(former_);
    freelocale(utf8_);
}

}  // namespace app
