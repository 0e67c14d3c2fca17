// The options of an import, which convert takes as well and hands to each of its imports.
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

// As the user wrote them, before they are made sense of.
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
    std::vector<const CLI::Option*> acclaimOptions;  // those that only Acclaim files take
    const CLI::Option* resampleOption = nullptr;
};

// What a bare --resample is made before it is parsed: the rate that --fps says.
inline constexpr char kRateOfFps[] = "fps";

// What convert takes as well.
void DescribeImportOptions(CLI::App& command, ImportWords& words);
// All of "zkhost import".
void DescribeImport(CLI::App& import, ImportWords& words);

// Makes sense of the numbers and names. `isAcclaim`: options that only Acclaim files have are
// allowed. Throws UsageError.
void UnderstandImportOptions(ImportWords& words, bool isAcclaim);
// All of "zkhost import". Throws UsageError.
ImportRequest UnderstandImport(ImportWords& words);

}  // namespace cli
