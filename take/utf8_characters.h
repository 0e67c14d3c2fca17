#pragma once

#include <locale.h>  // NOLINT(modernize-deprecated-headers): uselocale is POSIX

namespace take {

// While this exists, the C library decodes characters as UTF-8 on this thread, whatever the locale
// of the process says.
class Utf8Characters {
  public:
    // With `applies` false, nothing changes. Throws std::bad_alloc where the locale cannot be made.
    explicit Utf8Characters(bool applies);
    ~Utf8Characters();
    Utf8Characters(const Utf8Characters&) = delete;
    Utf8Characters& operator=(const Utf8Characters&) = delete;

  private:
    locale_t utf8_ = nullptr;
    locale_t previous_ = nullptr;
};

}  // namespace take
