// A locale that writes numbers with a comma, for as long as the object lives: an installed one or,
// where there is none, one that is built from the system's locale sources into a temporary folder.
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

    // Why there is no such locale; empty where the comma is in force.
    const std::string& Problem() const { return problem_; }

  private:
    bool TryInstalled();
    bool TryBuilt();

    std::string before_;
    std::string problem_;
    std::optional<TemporaryFolder> built_;
};

}  // namespace support
