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

// A record, little-endian.
class Record {
  public:
    Record& Put16(std::uint64_t value) { return Put(value, 2); }
    Record& Put32(std::uint64_t value) { return Put(value, 4); }
    Record& Put64(std::uint64_t value) { return Put(value, 8); }
    Record& PutText(std::string_view text) {
        bytes_ += text;
        return *this;
    }
    // A value that is all ones where a ZIP64 record has it.
    Record& PutSmall32(std::uint64_t value) { return Put32(std::min(value, kLargest32)); }
    const std::string& Bytes() const { return bytes_; }

  private:
    Record& Put(std::uint64_t value, int bytes) {
        for (; bytes > 0; --bytes, value >>= 8)
            bytes_ += static_cast<char>(value & 0xFF);
        return *this;
    }
    std::string bytes_;
};

// What comes between the signature and the sizes, of a member and of its directory entry alike.
void PutMethod(Record& record, bool isZip64) {
    record.Put16(isZip64 ? kZip64Version : kPlainVersion).Put16(kUtf8Names);
    record.Put16(0);                             // stored
    record.Put16(0).Put16(kFirstOfJanuary1980);  // the earliest time there is
}

}  // namespace

std::uint32_t Crc32(std::uint32_t crc, std::string_view bytes) {
    return static_cast<std::uint32_t>(
        crc32_z(crc, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()));
}

void ZipWriter::BeginMember(const std::string& name, std::uint64_t size, std::uint32_t crc) {
    const bool isZip64 = size >= kLargest32;
    members_.push_back({name, size, position_, crc});
    Record extra;
    if (isZip64) extra.Put16(kZip64Extra).Put16(16).Put64(size).Put64(size);
    Record record;
    record.Put32(0x04034B50);
    PutMethod(record, isZip64);
    const std::uint64_t shown = isZip64 ? kLargest32 : size;
    record.Put32(crc).Put32(shown).Put32(shown);
    record.Put16(name.size()).Put16(extra.Bytes().size()).PutText(name).PutText(extra.Bytes());
    Write(record.Bytes());
}

void ZipWriter::Write(std::string_view bytes) {
    sink_(bytes);
    position_ += bytes.size();
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
    const std::uint64_t shown = isLarge ? kLargest32 : member.size;
    record.Put32(member.crc).Put32(shown).Put32(shown);
    record.Put16(member.name.size()).Put16(extra.Bytes().size()).Put16(0);
    record.Put16(0).Put16(0).Put32(0);  // the first disk, no attributes
    record.PutSmall32(member.offset).PutText(member.name).PutText(extra.Bytes());
    Write(record.Bytes());
}

void ZipWriter::Finish() {
    const std::uint64_t start = position_;
    for (const Member& member : members_)
        WriteDirectoryEntry(member);
    const std::uint64_t size = position_ - start;
    const std::uint64_t end = position_;
    if (start >= kLargest32 || size >= kLargest32) {
        Record record;
        record.Put32(0x06064B50).Put64(44).Put16(kZip64Version).Put16(kZip64Version);
        record.Put32(0).Put32(0).Put64(members_.size()).Put64(members_.size());
        record.Put64(size).Put64(start);
        record.Put32(0x07064B50).Put32(0).Put64(end).Put32(1);  // where to find it
        Write(record.Bytes());
    }
    Record record;
    record.Put32(0x06054B50).Put16(0).Put16(0).Put16(members_.size()).Put16(members_.size());
    record.PutSmall32(size).PutSmall32(start).Put16(0);
    Write(record.Bytes());
}

}  // namespace exporters
