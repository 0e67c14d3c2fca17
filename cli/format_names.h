// Finds the output formats that the user names. The messages for unknown names list all formats.
#pragma once

#include <string>
#include <vector>

#include "export/formats.h"

namespace cli {

// Returns the format that belongs to the extension of an output. Throws UsageError if there is
// none, or if the path leads to a folder.
const exporters::Format* FormatOfFile(const std::string& path);

// Parses the values of `option`. Each value names one or more formats, separated by commas, in any
// letter case: "glb,npz". Returns the formats in the order of exporters::Formats(), so that the
// result does not depend on the order of the names. A format that is named twice is returned once.
// Throws UsageError.
std::vector<const exporters::Format*> ParseFormats(const char* option,
                                                   const std::vector<std::string>& values);

}  // namespace cli
