// Describes a text that is not a capture file of the expected format.
#pragma once

#include <string_view>

namespace survey {

// "gzip data", "a web page (HTML)", "an Acclaim skeleton (ASF)", ... or "text of another kind".
std::string_view DescribeText(std::string_view text);

}  // namespace survey
