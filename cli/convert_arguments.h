// The options and arguments of "zkhost convert".
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/import_options.h"
#include "dataset/request.h"

namespace cli {

// The options as the user wrote them. CLI11 stores flags, and texts that need no parsing, directly
// in `request`.
struct ConvertWords {
    dataset::Request request;
    std::vector<std::string> formats;
    std::optional<std::string> parallel;
    std::optional<std::string> timeLimit;
    ImportWords import;
    // The options that convert passes on to every import. The options for Acclaim files only are in
    // import.acclaimOptions.
    std::vector<const CLI::Option*> passedOn;
};

// Declares all options and arguments.
void DescribeConvert(CLI::App& convert, ConvertWords& words);
// Parses all values and returns the request. Throws UsageError.
dataset::Request BuildConvertRequest(ConvertWords& words);

}  // namespace cli
