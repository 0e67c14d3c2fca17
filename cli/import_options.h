// The options that "zkhost import" and "zkhost convert" have in common. Convert passes them on to
// each of its imports.
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

// The options as the user wrote them. CLI11 stores flags, and texts that need no parsing, directly
// in `request`. The other values are kept here as texts until ParseImportOptions and
// BuildImportRequest parse them into `request`. A member is nullopt if the user did not give its
// option.
struct ImportWords {
    ImportRequest request;
    std::string motionFile;  // empty if the user gave none
    std::optional<std::string> as;
    std::optional<std::string> length;
    std::optional<std::string> preset;
    std::optional<std::string> scale;
    std::optional<std::string> up;
    std::optional<std::string> fps;
    std::optional<std::string> digits;
    std::optional<std::string> resample;
    std::optional<std::string> frames;
    std::optional<std::string> animations;
    std::optional<std::string> csvNames;
    std::optional<std::string> progress;
    std::optional<std::string> threads;
    std::vector<std::string> outputs;
    bool nulls = false;
    bool bones = false;
    // CLI11's records of some options. They belong to the CLI::App.
    std::vector<const CLI::Option*> acclaimOptions;  // the options for Acclaim files only
    const CLI::Option* resampleOption = nullptr;
    const CLI::App* command = nullptr;  // the command that the user gave
};

// The value of ImportWords::resample if the user wrote --resample without a number. The samples
// then have the rate that the user gave with --fps. Without --fps, "--preset cmu" gives the rate.
inline constexpr char kRateOfFps[] = "fps";

// Declares the options that import and convert have in common.
void DescribeImportOptions(CLI::App& command, ImportWords& words);

// Parses the values of the common options into words.request. Throws UsageError for a wrong value.
// If `isAcclaim` is false, also throws UsageError for an option that is for Acclaim files only.
void ParseImportOptions(ImportWords& words, bool isAcclaim);

}  // namespace cli
