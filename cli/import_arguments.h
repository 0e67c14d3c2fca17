// The options and arguments of "zkhost import".
#pragma once

#include "cli/import_options.h"

namespace cli {

// Declares all options and arguments.
void DescribeImport(CLI::App& import, ImportWords& words);
// Parses all values and returns the request. Throws UsageError.
ImportRequest BuildImportRequest(ImportWords& words);

}  // namespace cli
