// Parses BVH sections without an importer and without a session of the host.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "bvh/bvh_parser.h"

namespace support {

class ParsedBvh {
  public:
    // Holds a text. Each call of ParseSection then parses the next section in it.
    bool Open(std::string_view text) {
        const bool holdsText = file.ReadMemory(text);
        allowances.Reset(file.GetSize());
        return holdsText;
    }

    // Skips the next token, whatever it is, and parses the section after it. Returns the parser's
    // status.
    std::int32_t ParseSection() {
        skeleton = {};
        parser.Reset();
        file.GetNextString();
        const std::int32_t status = parser.ParseHierarchy(nullptr);
        return status == 0 ? parser.ParseMotion() : status;
    }

    std::int32_t Parse(std::string_view text) {
        Open(text);
        return ParseSection();
    }

    MOCAPMODEL& Node(std::size_t index) { return *skeleton.models.at(index); }
    std::string Name(std::size_t index) { return Node(index).name.get(); }
    // The message of the last error. It is ASCII.
    std::string Message() const {
        const std::wstring_view message = parser.LastError().message;
        return {message.begin(), message.end()};
    }

    CStringFile file;
    MocapSkeleton skeleton;
    FileAllowances allowances;
    ParseMonitor monitor;
    BvhParser parser{file, skeleton, allowances, monitor};
};

}  // namespace support
