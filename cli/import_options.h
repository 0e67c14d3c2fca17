// The options of "zkhost import". "zkhost convert" has most of them too and passes them on to each
// of its imports.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/arguments.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace cli {

// The options as the user wrote them. CLI11 sets the flags in `request` directly; values are texts
// here until BuildImportRequest parses them.
struct ImportWords {
    ImportRequest request;
    std::string motionFile;  // empty: none
    std::optional<std::string> length;
    std::optional<std::string> preset;
    std::optional<std::string> scale;
    std::optional<std::string> up;
    std::optional<std::string> fps;
    std::optional<std::string> digits;
    std::optional<std::string> resample;
    std::optional<std::string> progress;
    std::vector<std::string> outputs;
    bool nulls = false;
    bool bones = false;
    std::vector<const CLI::Option*> acclaimOptions;  // the options for Acclaim files only
    const CLI::Option* resampleOption = nullptr;
};

// The value of a --resample without a number. It means the rate of --fps.
inline constexpr char kRateOfFps[] = "fps";

// Declares the options that import and convert have in common.
void DescribeImportOptions(CLI::App& command, ImportWords& words);
// Declares all options and arguments of "zkhost import".
void DescribeImport(CLI::App& import, ImportWords& words);

// Parses the values of the common options into words.request. `isAcclaim` allows the options that
// are for Acclaim files only. Throws UsageError.
void ParseImportOptions(ImportWords& words, bool isAcclaim);
// Parses all values of "zkhost import". Throws UsageError.
ImportRequest BuildImportRequest(ImportWords& words);

}  // namespace cli
