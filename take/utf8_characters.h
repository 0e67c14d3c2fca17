#pragma once

#include <locale.h>  // NOLINT(modernize-deprecated-headers): uselocale is POSIX

namespace take {

// For as long as this lives, this thread reads characters as UTF-8, whatever its locale says.
class Utf8Characters {
  public:
    // Where `applies` is false, nothing changes.
    explicit Utf8Characters(bool applies);
    ~Utf8Characters();
    Utf8Characters(const Utf8Characters&) = delete;
    Utf8Characters& operator=(const Utf8Characters&) = delete;

  private:
    locale_t utf8_ = nullptr;
    locale_t former_ = nullptr;
};

}  // namespace take
