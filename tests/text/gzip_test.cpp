#include "text/gzip.h"

#include <gmock/gmock.h>

#include "tests/support/gzip_data.h"

namespace gzip_test {

using support::PackGzip;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::uint64_t kNoLimit = std::uint64_t{1} << 32;

std::string Lines(int count) {
    std::string text;
    for (int line = 0; line < count; ++line)
        text += std::to_string(line * line) + " 0.25\n";
    return text;
}

// Replaces the byte that is this far before the end.
std::string WithByte(std::string bytes, std::size_t fromEnd, char byte) {
    bytes[bytes.size() - fromEnd] = byte;
    return bytes;
}

struct Row {
    const char* name;
    std::string bytes;
    std::string text;
    const char* problem = "";
    std::uint64_t limit = kNoLimit;
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.name;
}

const Row kRows[] = {
    {"Text", PackGzip("walk\n"), "walk\n"},
    {"NoBytes", PackGzip(""), ""},
    {"LongText", PackGzip(Lines(200000)), Lines(200000)},
    {"MuchSmaller", PackGzip(std::string(3000000, ' ')), std::string(3000000, ' ')},
    {"TwoMembers", PackGzip("a\n") + PackGzip(Lines(20000)), "a\n" + Lines(20000)},
    {"ManyEmptyMembers", PackGzip("") + PackGzip("") + PackGzip("a") + PackGzip(""), "a"},
    {"ZerosAfterIt", PackGzip("a") + std::string(600, '\0'), "a"},
    {"ZerosBetween", PackGzip("a") + '\0' + PackGzip("b"), "", "followed by other bytes"},
    {"OtherBytesAfterIt", PackGzip("a") + "b", "", "followed by other bytes"},
    {"NoBytesAtAll", "", "", "does not contain gzip data"},
    {"PlainText", "HIERARCHY\n", "", "does not contain gzip data"},
    {"TwoBytes", "\x1F\x8B", "", "end too early"},
    {"Cut", PackGzip(Lines(100)).substr(0, 100), "", "end too early"},
    {"CutInItsTrailer", PackGzip("a").substr(0, PackGzip("a").size() - 1), "", "end too early"},
    {"SecondMemberCut", PackGzip("a") + PackGzip("b").substr(0, 5), "", "end too early"},
    {"OtherChecksum", WithByte(PackGzip("a"), 8, 'x'), "", "damaged: incorrect data check"},
    {"OtherSize", WithByte(PackGzip("a"), 4, 'x'), "", "damaged: incorrect length check"},
    {"HugeSize", WithByte(PackGzip("a"), 1, '\xFF'), "", "damaged: incorrect length check"},
    {"OtherMethod", "\x1F\x8B\x07" + std::string(20, '\0'), "", "damaged: unknown compression"},
    {"BelowTheLimit", PackGzip("12345"), "12345", "", 6},
    {"AtTheLimit", PackGzip("12345"), "", "unpacks to 5 bytes or more", 5},
    {"MembersAtTheLimit", PackGzip("123") + PackGzip("45"), "", "unpacks to 5 bytes or more", 5},
    {"FarAboveTheLimit", PackGzip(std::string(9000000, '1')), "", "1000000 bytes or more", 1000000},
};

class Gzip : public testing::TestWithParam<Row> {};

TEST_P(Gzip, IsUnpackedOrRefused) {
    const text::Unpacked unpacked = text::UnpackGzip(GetParam().bytes, GetParam().limit);
    EXPECT_TRUE(unpacked.text == GetParam().text) << unpacked.text.size();
    EXPECT_THAT(unpacked.problem, HasSubstr(GetParam().problem));
    EXPECT_EQ(unpacked.problem.empty(), GetParam().problem == std::string());
}

INSTANTIATE_TEST_SUITE_P(, Gzip, testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.name; });

TEST(UnpackGzip, RefusesEveryBeginning) {
    const std::string whole = PackGzip(Lines(40)) + PackGzip("end\n");
    const std::size_t firstMember = PackGzip(Lines(40)).size();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        // A copy of its own lets the sanitizers see a read beyond its end.
        const std::string beginning = whole.substr(0, size);
        const text::Unpacked unpacked = text::UnpackGzip(beginning, kNoLimit);
        EXPECT_EQ(unpacked.problem.empty(), size == firstMember) << size;
    }
}

// The checksum finds every changed byte of the text. Some bytes of the header, such as the time,
// mean nothing to a reader.
TEST(UnpackGzip, NeverReturnsAnotherTextForAChangedByte) {
    const std::string text = Lines(40);
    const std::string whole = PackGzip(text);
    for (std::size_t index = 0; index < whole.size(); ++index) {
        for (const int change : {0x01, 0x10, 0x80, 0xFF}) {
            std::string bytes = whole;
            bytes[index] = static_cast<char>(static_cast<unsigned char>(bytes[index]) ^ change);
            const text::Unpacked unpacked = text::UnpackGzip(bytes, 100000);
            if (unpacked.problem.empty())
                EXPECT_TRUE(unpacked.text == text) << index;
            else
                EXPECT_THAT(unpacked.text, IsEmpty()) << index;
        }
    }
}

TEST(IsGzip, LooksAtTheFirstTwoBytes) {
    EXPECT_TRUE(text::IsGzip("\x1F\x8B"));
    EXPECT_FALSE(text::IsGzip("\x1F"));
    EXPECT_FALSE(text::IsGzip("HIERARCHY"));
}

}  // namespace gzip_test
