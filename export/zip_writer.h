// A ZIP archive of uncompressed members, written from front to back.
// Internal to export/.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace exporters {

// The CRC-32 of what gave `crc` and `bytes` after it; `crc` is 0 at the start.
std::uint32_t Crc32(std::uint32_t crc, std::string_view bytes);

// Sizes and offsets beyond 32 bits use the ZIP64 records. Members carry no time, so that equal
// contents make equal files.
class ZipWriter {
  public:
    using Sink = std::function<void(std::string_view)>;

    explicit ZipWriter(Sink sink) : sink_(std::move(sink)) {}

    // Exactly `size` bytes with that CRC must follow by Write. Both numbers are written before the
    // contents, for readers that do not look at the end of the file first.
    void BeginMember(const std::string& name, std::uint64_t size, std::uint32_t crc);
    void Write(std::string_view bytes);
    // Writes the directory, which ends the archive.
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
