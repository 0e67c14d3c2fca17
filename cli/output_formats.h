#pragma once

#include <string>
#include <vector>

#include "export/formats.h"

namespace cli {

// Parses the values of --to. Each value names one or more formats, separated by commas, in any
// letter case: "glb,npz". Returns the formats in the order of exporters::Formats(), so that the
// result does not depend on the order of the names. A format that is named twice is returned once.
// Throws UsageError.
std::vector<const exporters::Format*> ParseFormats(const std::vector<std::string>& values);

}  // namespace cli
