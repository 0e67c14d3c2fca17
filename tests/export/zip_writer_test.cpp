#include "export/zip_writer.h"

#include <cstring>
#include <gtest/gtest.h>

#include "export/crc32.h"

namespace {

// Stores the records of an archive and leaves out the contents, which may be very long.
class Archive : public text::ByteSink {
  public:
    void Write(std::string_view bytes) override {
        if (!isInContents) records += bytes;
    }
    template <class Number>
    Number At(std::size_t position) const {
        Number number{};
        std::memcpy(&number, records.data() + position, sizeof(number));
        return number;
    }
    std::size_t Find(std::string_view signature) const { return records.find(signature); }

    std::string records;
    bool isInContents = false;
};

constexpr std::string_view kDirectory = "PK\x01\x02";
constexpr std::string_view kEnd = "PK\x05\x06";
constexpr std::string_view kZip64End = "PK\x06\x06";

// Contents that are written later, after other members and in pieces from the last to the first.
TEST(ZipWriter, WritesTheSameMembersLater) {
    const std::string contents = "123456789";
    text::StringSink atOnce;
    exporters::ZipWriter writer(atOnce);
    writer.BeginMember("first", contents.size(), exporters::Crc32(0, contents));
    writer.Write(contents);
    writer.BeginMember("second", 3, exporters::Crc32(0, "abc"));
    writer.Write("abc");
    writer.Finish();

    text::StringSink later;
    later.Write("before");  // the archive need not begin where the sink does
    exporters::ZipWriter other(later);
    const auto member = other.BeginLater("first", contents.size());
    other.BeginMember("second", 3, exporters::Crc32(0, "abc"));
    other.Write("abc");
    later.WriteAt(member.contents + 4, contents.substr(4));
    later.WriteAt(member.contents, contents.substr(0, 4));
    other.EndLater(member, exporters::Crc32(0, contents));
    other.Finish();
    EXPECT_EQ(later.Bytes(), "before" + atOnce.Bytes());
}

TEST(ZipWriter, WritesSmallArchivesWithoutLargeRecords) {
    Archive archive;
    exporters::ZipWriter writer(archive);
    writer.BeginMember("a", 3, 7);
    writer.Write("abc");
    writer.Finish();
    const std::size_t entry = archive.Find(kDirectory);
    EXPECT_EQ(archive.At<std::uint32_t>(14), 7U);     // the CRC-32
    EXPECT_EQ(archive.At<std::uint32_t>(18), 3U);     // the size
    EXPECT_EQ(archive.records.substr(31, 3), "abc");  // the contents, after the name
    EXPECT_EQ(entry, 34U);
    EXPECT_EQ(archive.At<std::uint32_t>(entry + 42), 0U);  // byte offset of the member
    EXPECT_EQ(archive.Find(kZip64End), std::string::npos);
    const std::size_t end = archive.Find(kEnd);
    EXPECT_EQ(archive.At<std::uint16_t>(end + 10), 1U);     // members
    EXPECT_EQ(archive.At<std::uint32_t>(end + 16), entry);  // byte offset of the directory
}

TEST(ZipWriter, PutsLargeSizesAndOffsetsIntoRecordsOf64Bits) {
    constexpr std::uint64_t kSize = std::uint64_t{5} << 30;
    Archive archive;
    exporters::ZipWriter writer(archive);
    writer.BeginMember("large", kSize, 1);
    archive.isInContents = true;
    const std::string block(std::size_t{1} << 20, 'x');
    for (std::uint64_t written = 0; written < kSize; written += block.size())
        writer.Write(block);
    archive.isInContents = false;
    writer.BeginMember("far", 0, 2);
    writer.Finish();

    EXPECT_EQ(archive.At<std::uint32_t>(18), 0xFFFFFFFFU);
    EXPECT_EQ(archive.At<std::uint64_t>(30 + 5 + 4),
              kSize);  // after the name and the extra field's header
    const std::size_t large = archive.Find(kDirectory);
    EXPECT_EQ(archive.At<std::uint32_t>(large + 24), 0xFFFFFFFFU);
    EXPECT_EQ(archive.At<std::uint64_t>(large + 46 + 5 + 4), kSize);
    const std::size_t far = archive.records.find(kDirectory, large + 4);
    EXPECT_EQ(archive.At<std::uint32_t>(far + 24), 0U);
    EXPECT_EQ(archive.At<std::uint32_t>(far + 42), 0xFFFFFFFFU);
    const auto offset = archive.At<std::uint64_t>(far + 46 + 3 + 4);
    EXPECT_EQ(offset, kSize + 30 + 5 + 20);

    const std::size_t end64 = archive.Find(kZip64End);
    EXPECT_EQ(archive.At<std::uint64_t>(end64 + 32), 2U);
    EXPECT_EQ(archive.At<std::uint64_t>(end64 + 48), kSize + large);
    EXPECT_EQ(archive.At<std::uint64_t>(end64 + 56 + 8),
              kSize + end64);  // byte offset of that record
    EXPECT_EQ(archive.At<std::uint32_t>(archive.Find(kEnd) + 16), 0xFFFFFFFFU);
}

}  // namespace
