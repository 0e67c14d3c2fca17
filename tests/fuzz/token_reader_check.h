#pragma once

#include <string_view>

namespace fuzz {

// The first bytes choose the separators and the calls, which are repeated over the rest of the
// input as a file: every token lies where the reader says, lines and columns are those that
// counting gives, a refused number leaves the position alone.
void CheckTokenReader(std::string_view input);

}  // namespace fuzz
