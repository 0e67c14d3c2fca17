#include "export/zip_writer.h"

#include <algorithm>
#include <limits>
#include <new>
#include <zlib.h>

#include "export/crc32.h"

namespace exporters {
namespace {

constexpr std::uint64_t kLargest32 = 0xFFFFFFFF;
constexpr std::uint16_t kPlainVersion = 20;
constexpr std::uint16_t kZip64Version = 45;
constexpr std::uint16_t kUtf8Names = 0x0800;
constexpr std::uint16_t kFirstOfJanuary1980 = 0x0021;
constexpr std::uint16_t kZip64Extra = 0x0001;
// The two methods of storing contents.
constexpr std::uint16_t kStored = 0;
constexpr std::uint16_t kDeflated = 8;

// Collects the bytes of a record. Numbers are stored with the lowest byte first.
class Record {
  public:
    Record& Put16(std::uint64_t value) { return Put(value, 2); }
    Record& Put32(std::uint64_t value) { return Put(value, 4); }
    Record& Put64(std::uint64_t value) { return Put(value, 8); }
    Record& PutText(std::string_view text) {
        bytes_ += text;
        return *this;
    }
    // Appends a value as 32 bits. A larger value is replaced by 0xFFFFFFFF, which tells the reader
    // to look for the value in a ZIP64 record.
    Record& PutCapped32(std::uint64_t value) { return Put32(std::min(value, kLargest32)); }
    const std::string& Bytes() const { return bytes_; }

  private:
    Record& Put(std::uint64_t value, int bytes) {
        for (; bytes > 0; --bytes, value >>= 8)
            bytes_ += static_cast<char>(value & 0xFF);
        return *this;
    }
    std::string bytes_;
};

// Appends five fields: the version that a reader needs, the flags, the method, the time and the
// date. The header of a member and its directory entry both contain these fields. In both, the
// CRC-32 is the next field.
void PutMethod(Record& record, bool isZip64, bool isCompressed) {
    record.Put16(isZip64 ? kZip64Version : kPlainVersion).Put16(kUtf8Names);
    record.Put16(isCompressed ? kDeflated : kStored);
    record.Put16(0).Put16(kFirstOfJanuary1980);  // time 0:00 on the earliest possible date
}

const Bytef* BytesOf(std::string_view text) {
    return reinterpret_cast<const Bytef*>(text.data());
}

// Compresses a text in parts.
class Deflater {
  public:
    Deflater() {
        // With a negative number of window bits, zlib writes no header of its own.
        constexpr int kRawWindow = -15;
        constexpr int kMemoryLevel = 8;
        if (deflateInit2(&stream_, Z_DEFAULT_COMPRESSION, Z_DEFLATED, kRawWindow, kMemoryLevel,
                         Z_DEFAULT_STRATEGY) != Z_OK)
            throw std::bad_alloc();
    }
    ~Deflater() { deflateEnd(&stream_); }
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;

    // Adds a part, of any size. `isLast` says that no other part follows.
    void Add(std::string_view part, bool isLast) {
        while (part.size() > kMostAtOnce) {
            Feed(part.substr(0, kMostAtOnce), Z_NO_FLUSH);
            part.remove_prefix(kMostAtOnce);
        }
        Feed(part, isLast ? Z_FINISH : Z_NO_FLUSH);
    }
    const std::string& Compressed() const { return compressed_; }

  private:
    // zlib counts the bytes of a call in 32 bits.
    static constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;

    void Feed(std::string_view part, int flush) {
        // zlib does not change its input, but its interface does not say so.
        stream_.next_in = const_cast<Bytef*>(BytesOf(part));
        stream_.avail_in = static_cast<uInt>(part.size());
        Bytef block[16384];
        do {
            stream_.next_out = block;
            stream_.avail_out = sizeof block;
            deflate(&stream_, flush);
            compressed_.append(reinterpret_cast<const char*>(block),
                               sizeof block - stream_.avail_out);
        } while (stream_.avail_out == 0);
    }

    z_stream stream_{};
    std::string compressed_;
};

}  // namespace

void ZipWriter::BeginMember(const std::string& name, std::uint64_t size, std::uint32_t crc) {
    BeginMember({name, size, size, written_, crc, false});
}

void ZipWriter::AddCompressed(const std::string& name, std::string_view head,
                              std::string_view rest) {
    Deflater deflater;
    deflater.Add(head, false);
    deflater.Add(rest, true);
    const std::string& compressed = deflater.Compressed();
    const std::uint64_t size = std::uint64_t{head.size()} + rest.size();
    BeginMember({name, size, compressed.size(), written_, Crc32(Crc32(0, head), rest), true});
    Write(compressed);
}

void ZipWriter::Write(std::string_view bytes) {
    sink_.Write(bytes);
    written_ += bytes.size();
}

ZipWriter::Later ZipWriter::BeginLater(const std::string& name, std::uint64_t size) {
    members_.push_back({name, size, size, written_, 0, false});
    const std::uint64_t header = HeaderOf(members_.back()).size();
    const std::uint64_t start = sink_.Skip(header + size);
    written_ += header + size;
    return {members_.size() - 1, start + header};
}

void ZipWriter::EndLater(const Later& later, std::uint32_t crc) {
    Member& member = members_[later.index];
    member.crc = crc;
    const std::string header = HeaderOf(member);
    sink_.WriteAt(later.contents - header.size(), header);
}

void ZipWriter::BeginMember(const Member& member) {
    members_.push_back(member);
    Write(HeaderOf(member));
}

std::string ZipWriter::HeaderOf(const Member& member) {
    const bool isZip64 = member.size >= kLargest32 || member.storedSize >= kLargest32;
    Record extra;
    if (isZip64) extra.Put16(kZip64Extra).Put16(16).Put64(member.size).Put64(member.storedSize);
    Record record;
    record.Put32(0x04034B50);
    PutMethod(record, isZip64, member.isCompressed);
    record.Put32(member.crc);
    record.Put32(isZip64 ? kLargest32 : member.storedSize);
    record.Put32(isZip64 ? kLargest32 : member.size);
    record.Put16(member.name.size()).Put16(extra.Bytes().size());
    return record.PutText(member.name).PutText(extra.Bytes()).Bytes();
}

void ZipWriter::WriteDirectoryEntry(const Member& member) {
    const bool isLarge = member.size >= kLargest32 || member.storedSize >= kLargest32;
    const bool isFar = member.offset >= kLargest32;
    Record values;
    if (isLarge) values.Put64(member.size).Put64(member.storedSize);
    if (isFar) values.Put64(member.offset);
    Record extra;
    if (isLarge || isFar)
        extra.Put16(kZip64Extra).Put16(values.Bytes().size()).PutText(values.Bytes());
    Record record;
    record.Put32(0x02014B50).Put16(kZip64Version);
    PutMethod(record, isLarge || isFar, member.isCompressed);
    record.Put32(member.crc);
    record.Put32(isLarge ? kLargest32 : member.storedSize);
    record.Put32(isLarge ? kLargest32 : member.size);
    record.Put16(member.name.size()).Put16(extra.Bytes().size()).Put16(0);
    record.Put16(0).Put16(0).Put32(0);  // disk 0 and no attributes
    record.PutCapped32(member.offset).PutText(member.name).PutText(extra.Bytes());
    Write(record.Bytes());
}

void ZipWriter::Finish() {
    const std::uint64_t start = written_;
    for (const Member& member : members_)
        WriteDirectoryEntry(member);
    const std::uint64_t size = written_ - start;
    const std::uint64_t end = written_;
    if (start >= kLargest32 || size >= kLargest32) {
        Record record;
        record.Put32(0x06064B50).Put64(44).Put16(kZip64Version).Put16(kZip64Version);
        record.Put32(0).Put32(0).Put64(members_.size()).Put64(members_.size());
        record.Put64(size).Put64(start);
        // The line below appends the locator. It says that the ZIP64 record, which the lines above
        // put together, begins at the byte offset `end` of the archive.
        record.Put32(0x07064B50).Put32(0).Put64(end).Put32(1);
        Write(record.Bytes());
    }
    Record record;
    record.Put32(0x06054B50).Put16(0).Put16(0).Put16(members_.size()).Put16(members_.size());
    record.PutCapped32(size).PutCapped32(start).Put16(0);
    Write(record.Bytes());
}

}  // namespace exporters
