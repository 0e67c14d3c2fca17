// Skeletons that the import refuses before its parser reads them.
#pragma once

#include <cstdint>
#include <ostream>

#include "host/status.h"

struct RefusedFile {
    const char* name;
    const char* text;
    const char* message;
    std::int32_t status;
};
inline std::ostream& operator<<(std::ostream& out, const RefusedFile& row) {
    return out << row.name;
}

inline const RefusedFile kRefusedSkeletons[] = {
    {"Empty", "", "Failed to read ASF file. Specify a valid file name",
     Zelk::status::kFileNotFound},
    {"CommentsOnly", "# one\n# two\n", "ASF file is invalid. Specify a valid ASF file",
     Zelk::status::kIncompatibleFile},
    {"NameFirst", "# one\n:name a\n:version 1.1", "ASF file is invalid. Specify a valid ASF file",
     Zelk::status::kIncompatibleFile},
    {"VersionMissing", ":version", "Bad ASF file version. Specify a valid ASF file",
     Zelk::status::kInvalidArgument},
    {"VersionWord", ":version new", "Bad ASF file version. Specify a valid ASF file",
     Zelk::status::kInvalidArgument},
    {"VersionTooLow", ":version 0.9", "Unsupported ASF file version. Specify a valid ASF file",
     Zelk::status::kInvalidArgument},
    {"VersionZero", ":version 0", "Unsupported ASF file version. Specify a valid ASF file",
     Zelk::status::kInvalidArgument},
};
