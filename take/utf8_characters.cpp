#include "take/utf8_characters.h"

#include <new>

namespace take {

Utf8Characters::Utf8Characters(bool applies) {
    if (!applies) return;
    utf8_ = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (!utf8_) throw std::bad_alloc();
    previous_ = uselocale(utf8_);
}

Utf8Characters::~Utf8Characters() {
    if (!utf8_) return;
    uselocale(previous_);
    freelocale(utf8_);
}

}  // namespace take
