#pragma once

#include <string_view>

namespace fuzz {

// The first bytes choose the separators and the calls; the rest is a file, over which the calls are
// repeated. Requires that every token is where the reader says, that lines and columns are those
// that a plain count gives, and that a refused number does not move the reader.
void CheckTokenReader(std::string_view input);

}  // namespace fuzz
