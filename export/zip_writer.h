// Writes a ZIP archive to a sink, in one pass from front to back.
// Internal to export/.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace exporters {

// Continues a CRC-32. `crc` is the CRC-32 of all bytes before `bytes`, or 0 if there are none.
// Returns the CRC-32 of these bytes and `bytes` together.
std::uint32_t Crc32(std::uint32_t crc, std::string_view bytes);

// Sizes and byte offsets that need more than 32 bits are written in ZIP64 records. All members have
// the same date, so that equal contents make equal files. Passes on what the sink throws.
class ZipWriter {
  public:
    using Sink = std::function<void(std::string_view)>;

    explicit ZipWriter(Sink sink) : sink_(std::move(sink)) {}

    // Begins a member. The caller then passes the contents to Write: exactly `size` bytes, whose
    // CRC-32 is `crc`. The size and the CRC-32 are written before the contents, for readers that
    // read the archive from front to back.
    void BeginMember(const std::string& name, std::uint64_t size, std::uint32_t crc);
    // Appends bytes to the contents of the current member.
    void Write(std::string_view bytes);
    // Writes a whole member. Its contents, which are `head` followed by `rest`, are compressed
    // (RFC 1951). Throws std::bad_alloc if there is no memory for the compressed contents.
    void AddCompressed(const std::string& name, std::string_view head, std::string_view rest);
    // Writes the directory, which ends the archive.
    void Finish();

  private:
    struct Member {
        std::string name;
        std::uint64_t size;        // of the contents
        std::uint64_t storedSize;  // of the contents in the archive
        std::uint64_t offset;      // byte offset of the member in the archive
        std::uint32_t crc;
        bool isCompressed;
    };

    void BeginMember(const Member& member);
    void WriteDirectoryEntry(const Member& member);

    Sink sink_;
    std::uint64_t written_ = 0;  // the number of bytes that were written so far
    std::vector<Member> members_;
};

}  // namespace exporters
