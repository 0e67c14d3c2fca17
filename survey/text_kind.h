// What a text that is no motion capture of the expected kind looks like.
#pragma once

#include <string_view>

namespace survey {

// "gzip data", "a web page", "an Acclaim skeleton (ASF)", ... or "text of another kind".
std::string_view DescribeText(std::string_view text);

}  // namespace survey
