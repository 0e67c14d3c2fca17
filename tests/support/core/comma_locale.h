// Sets a locale that writes numbers with a comma until the object is destroyed: an installed one
// or, if there is none, one that is built from the system's locale sources into a temporary folder.
#pragma once

#include <optional>
#include <string>

#include "tests/support/temporary_folder.h"

namespace support {

class CommaLocale {
  public:
    CommaLocale();
    ~CommaLocale();
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

    // Why there is no such locale; empty if the locale is set.
    const std::string& Problem() const { return problem_; }

  private:
    bool TryInstalled();
    bool TryBuilt();

    std::string before_;
    std::string problem_;
    std::optional<TemporaryFolder> built_;
};

}  // namespace support
