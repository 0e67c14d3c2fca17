// What a fuzzer asks of an import beyond surviving it.
#pragma once

#include <stdexcept>
#include <string>

namespace fuzz {

// Something that must hold of every input does not. Ends a fuzzer's process, fails a test.
class RequirementFailed : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

inline void Require(bool holds, const std::string& what) {
    if (!holds) throw RequirementFailed(what);
}

}  // namespace fuzz
