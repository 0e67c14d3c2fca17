// Files that the importer refuses: one row for each case of each message.
#pragma once

#include <cstdint>
#include <ostream>
#include <span>
#include <string>

struct BadFile {
    std::string name;
    std::string text;
    std::string message;
    std::uint32_t line;    // as printed, counted from 1
    std::uint32_t column;  // counted from 0
    std::int32_t status;   // returned by the parser
};

inline void PrintTo(const BadFile& row, std::ostream* out) {
    *out << row.text;
}

// Skeletons, without the line with the version.
std::span<const BadFile> BadSkeletons();
// Whole motion files for the sample skeleton.
std::span<const BadFile> BadMotions();
