// A ZIP archive of uncompressed members, written from front to back.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace exporters {

// The CRC-32 of `bytes` behind what gave `crc`; 0 at the start.
std::uint32_t Crc32(std::uint32_t crc, std::string_view bytes);

// Sizes and offsets beyond 32 bits use the ZIP64 records. Members carry no time, so that equal
// contents make equal files.
class ZipWriter {
  public:
    using Sink = std::function<void(std::string_view)>;

    explicit ZipWriter(Sink sink) : sink_(std::move(sink)) {}

    // The member's contents follow by Write, exactly so many bytes with that CRC: readers that do
    // not look at the end of the file first find both before the contents.
    void BeginMember(const std::string& name, std::uint64_t size, std::uint32_t crc);
    void Write(std::string_view bytes);
    // The directory.
    void Finish();

  private:
    struct Member {
        std::string name;
        std::uint64_t size;
        std::uint64_t offset;
        std::uint32_t crc;
    };

    void WriteDirectoryEntry(const Member& member);

    Sink sink_;
    std::uint64_t position_ = 0;
    std::vector<Member> members_;
};

}  // namespace exporters
