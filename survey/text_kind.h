// Describes a text that is not a capture file of the expected format.
#pragma once

#include <string_view>

namespace survey {

// Returns words for a message: "gzip data", "a web page (HTML)", "an Acclaim skeleton (ASF)" and
// others. Returns "text of another kind" if the kind is not recognised.
std::string_view DescribeText(std::string_view text);

}  // namespace survey
