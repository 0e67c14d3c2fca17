// What each message of the importer is for: a file that gives it, one row a case.
#pragma once

#include <cstdint>
#include <ostream>
#include <span>
#include <string>

struct BadFile {
    std::string name;
    std::string text;
    std::string message;
    std::uint32_t line;    // as printed, from 1
    std::uint32_t column;  // from 0
    std::int32_t status;   // of the parser
};

inline void PrintTo(const BadFile& row, std::ostream* out) {
    *out << row.text;
}

// Skeletons, from behind the line with the version.
std::span<const BadFile> BadSkeletons();
// Motions of the sample skeleton, whole files.
std::span<const BadFile> BadMotions();
