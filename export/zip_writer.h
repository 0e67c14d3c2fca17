// Writes a ZIP archive to a sink.
// Internal to export/.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "text/byte_sink.h"

namespace exporters {

// Sizes and byte offsets that need more than 32 bits are written in ZIP64 records. All members have
// the same date, so that equal contents make equal files. Passes on what the sink throws.
class ZipWriter {
  public:
    // A member whose contents are written later.
    struct Later {
        std::size_t index;       // among the members
        std::uint64_t contents;  // byte offset of the contents in the sink
    };

    // Keeps a reference to the sink.
    explicit ZipWriter(text::ByteSink& sink) : sink_(sink) {}

    // Begins a member. The caller then passes the contents to Write: exactly `size` bytes, whose
    // CRC-32 is `crc`. The size and the CRC-32 are written before the contents, for readers that
    // read the archive from front to back.
    void BeginMember(const std::string& name, std::uint64_t size, std::uint32_t crc);
    // Appends bytes to the contents of the current member.
    void Write(std::string_view bytes);
    // Writes a whole member. Its contents, which are `head` followed by `rest`, are compressed
    // (RFC 1951). Throws std::bad_alloc if there is no memory for the compressed contents.
    void AddCompressed(const std::string& name, std::string_view head, std::string_view rest);
    // Leaves room for a member with `size` bytes of contents. The sink must be able to skip. The
    // caller then writes the contents by text::ByteSink::WriteAt and calls EndLater. Other members
    // may be written meanwhile.
    Later BeginLater(const std::string& name, std::uint64_t size);
    // `crc` is the CRC-32 of the contents.
    void EndLater(const Later& later, std::uint32_t crc);
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

    // Returns what is written before the contents of a member.
    static std::string HeaderOf(const Member& member);
    void BeginMember(const Member& member);
    void WriteDirectoryEntry(const Member& member);

    text::ByteSink& sink_;
    // The number of bytes that were written or left out so far.
    std::uint64_t written_ = 0;
    std::vector<Member> members_;
};

}  // namespace exporters
