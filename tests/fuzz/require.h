// What a fuzzer requires of an import besides that it does not crash.
#pragma once

#include <stdexcept>
#include <string>

namespace fuzz {

// Thrown if a condition that must hold for every input does not. It ends the process of a fuzzer
// and fails a test.
class RequirementFailed : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

inline void Require(bool holds, const std::string& what) {
    if (!holds) throw RequirementFailed(what);
}

}  // namespace fuzz
