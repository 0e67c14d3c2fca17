// Words of a file in messages.
#pragma once

#include <string>
#include <string_view>

namespace survey {

// In quotes, as UTF-8 whatever the bytes are, and no longer than a message bears.
std::string Quoted(std::string_view word);

}  // namespace survey
