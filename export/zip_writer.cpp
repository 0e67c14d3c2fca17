#include "export/zip_writer.h"

#include <algorithm>
#include <limits>
#include <zlib.h>

namespace exporters {
namespace {

constexpr std::uint64_t kLargest32 = 0xFFFFFFFF;
constexpr std::uint16_t kPlainVersion = 20;
constexpr std::uint16_t kZip64Version = 45;
constexpr std::uint16_t kUtf8Names = 0x0800;
constexpr std::uint16_t kFirstOfJanuary1980 = 0x0021;
constexpr std::uint16_t kZip64Extra = 0x0001;

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

// Appends the fields from the required version to the date. The header of a member and its
// directory entry both contain these fields. In both, the CRC-32 is the next field.
void PutMethod(Record& record, bool isZip64) {
    record.Put16(isZip64 ? kZip64Version : kPlainVersion).Put16(kUtf8Names);
    record.Put16(0);                             // the method "stored"
    record.Put16(0).Put16(kFirstOfJanuary1980);  // time 0:00 on the earliest possible date
}

}  // namespace

std::uint32_t Crc32(std::uint32_t crc, std::string_view bytes) {
    return static_cast<std::uint32_t>(
        crc32_z(crc, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()));
}

void ZipWriter::BeginMember(const std::string& name, std::uint64_t size, std::uint32_t crc) {
    const bool isZip64 = size >= kLargest32;
    members_.push_back({name, size, written_, crc});
    Record extra;
    if (isZip64) extra.Put16(kZip64Extra).Put16(16).Put64(size).Put64(size);
    Record record;
    record.Put32(0x04034B50);
    PutMethod(record, isZip64);
    const std::uint64_t size32 = isZip64 ? kLargest32 : size;
    record.Put32(crc).Put32(size32).Put32(size32);
    record.Put16(name.size()).Put16(extra.Bytes().size()).PutText(name).PutText(extra.Bytes());
    Write(record.Bytes());
}

void ZipWriter::Write(std::string_view bytes) {
    sink_(bytes);
    written_ += bytes.size();
}

void ZipWriter::WriteDirectoryEntry(const Member& member) {
    const bool isLarge = member.size >= kLargest32;
    const bool isFar = member.offset >= kLargest32;
    Record values;
    if (isLarge) values.Put64(member.size).Put64(member.size);
    if (isFar) values.Put64(member.offset);
    Record extra;
    if (isLarge || isFar)
        extra.Put16(kZip64Extra).Put16(values.Bytes().size()).PutText(values.Bytes());
    Record record;
    record.Put32(0x02014B50).Put16(kZip64Version);
    PutMethod(record, isLarge || isFar);
    const std::uint64_t size32 = isLarge ? kLargest32 : member.size;
    record.Put32(member.crc).Put32(size32).Put32(size32);
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
        // The next record says that the record above begins at the byte offset `end`.
        record.Put32(0x07064B50).Put32(0).Put64(end).Put32(1);
        Write(record.Bytes());
    }
    Record record;
    record.Put32(0x06054B50).Put16(0).Put16(0).Put16(members_.size()).Put16(members_.size());
    record.PutCapped32(size).PutCapped32(start).Put16(0);
    Write(record.Bytes());
}

}  // namespace exporters
