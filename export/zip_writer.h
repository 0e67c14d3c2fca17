// Writes a ZIP archive of uncompressed members, from front to back.
// Internal to export/.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace exporters {

// Continues a CRC-32. `crc` is the CRC-32 of the bytes before, or 0 if there are none; the result
// is that of the bytes before and `bytes` together.
std::uint32_t Crc32(std::uint32_t crc, std::string_view bytes);

// Sizes and offsets beyond 32 bits are written in ZIP64 records. All members have the same date, so
// that equal contents make equal files. Errors of the sink are passed on.
class ZipWriter {
  public:
    using Sink = std::function<void(std::string_view)>;

    explicit ZipWriter(Sink sink) : sink_(std::move(sink)) {}

    // Begins a member. Its contents must follow with Write: exactly `size` bytes with the CRC-32
    // `crc`. Both numbers are written before the contents, for readers that read the archive from
    // front to back.
    void BeginMember(const std::string& name, std::uint64_t size, std::uint32_t crc);
    void Write(std::string_view bytes);
    // Writes the directory, which ends the archive.
    void Finish();

  private:
    struct Member {
        std::string name;
        std::uint64_t size;
        std::uint64_t offset;  // byte offset of the member in the archive
        std::uint32_t crc;
    };

    void WriteDirectoryEntry(const Member& member);

    Sink sink_;
    std::uint64_t written_ = 0;  // bytes that were written so far
    std::vector<Member> members_;
};

}  // namespace exporters
