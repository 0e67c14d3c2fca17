// Finds the output formats that the user names. The messages for unknown names list all formats.
#pragma once

#include <string>

#include "export/formats.h"

namespace cli {

// Returns the format that belongs to the extension of an output. Throws UsageError if there is
// none, or if the path leads to a folder.
const exporters::Format* FormatOfFile(const std::string& path);

// Returns the format that the user named as a value of `option`, such as "glb", in any letter case.
// Throws UsageError.
const exporters::Format* FormatCalled(const char* option, const std::string& name);

}  // namespace cli
