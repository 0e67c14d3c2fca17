#pragma once

#include <locale.h>  // NOLINT(modernize-deprecated-headers): uselocale is POSIX

namespace take {

// While an object of this class exists, the C library decodes characters as UTF-8 on the thread
// that created it, whatever the locale of the process is.
class Utf8Characters {
  public:
    // If `applies` is false, the object does nothing. Throws std::bad_alloc if the locale cannot be
    // created.
    explicit Utf8Characters(bool applies);
    ~Utf8Characters();
    Utf8Characters(const Utf8Characters&) = delete;
    Utf8Characters& operator=(const Utf8Characters&) = delete;

  private:
    locale_t utf8_ = nullptr;      // null if the object does nothing
    locale_t previous_ = nullptr;  // the thread's locale before; the destructor restores it
};

}  // namespace take
