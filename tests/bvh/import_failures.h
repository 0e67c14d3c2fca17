// Files that the import refuses before its parser reads them, with the message and the status.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>

namespace bvh_test {

struct FailedImport {
    const char* name;
    const char* message;
    const char* status;
    std::string bytes;  // the content of the file
};
inline std::ostream& operator<<(std::ostream& out, const FailedImport& row) {
    return out << row.name;
}

inline const FailedImport kFailedImports[] = {
    {"EmptyFile", "Failed to read BVH file. Specify a valid file name", "0x80070002", ""},
    {"OtherFormat", "BVH file is invalid. Specify a valid BVH file", "0x800703EE",
     ":version 1.10\n"},
    {"OnlyWhiteSpace", "BVH file is invalid. Specify a valid BVH file", "0x800703EE", " \n\t\r\n"},
    {"OneNul", "BVH file is invalid. Specify a valid BVH file", "0x800703EE", std::string(1, '\0')},
    {"NulBeforeTheKeyword", "BVH file is invalid. Specify a valid BVH file", "0x800703EE",
     std::string("\0HIERARCHY", 10)},
    {"KeywordWithTail", "BVH file is invalid. Specify a valid BVH file", "0x800703EE",
     "HIERARCHY: x"},
    {"ByteOrderMark", "BVH file is invalid. Specify a valid BVH file", "0x800703EE",
     "\xEF\xBB\xBFHIERARCHY ROOT A { OFFSET 0 0 0 }"},
    {"WideText", "BVH file is invalid. Specify a valid BVH file", "0x800703EE",
     std::string("H\0I\0E\0R\0A\0R\0C\0H\0Y\0", 18)},
    {"MotionFirst", "BVH file is invalid. Specify a valid BVH file", "0x800703EE",
     "MOTION Frames: 0 Frame Time: 1"},
};

inline constexpr const char* kNoFileMessage = "BVH file not specified. Specify a valid file name";
inline constexpr const char* kNoNameMessage =
    "Container model name not specified. Specify a valid model name";

}  // namespace bvh_test
