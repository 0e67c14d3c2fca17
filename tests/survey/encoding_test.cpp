#include "survey/encoding.h"

#include <gtest/gtest.h>

namespace {

TEST(Encoding, KnowsWhatIconvKnows) {
    EXPECT_TRUE(survey::IsKnownEncoding("SHIFT_JIS"));
    EXPECT_FALSE(survey::IsKnownEncoding("NO-SUCH-ENCODING"));
}

TEST(Encoding, ConvertsAndKeepsGoingAfterAWrongByte) {
    EXPECT_EQ(survey::ConvertEncoding("\x83\x7B", "SHIFT_JIS"), "\xE3\x83\x9C");
    EXPECT_EQ(survey::ConvertEncoding("a\xFFz", "SHIFT_JIS"), "a\xEF\xBF\xBDz");
}

TEST(Encoding, ConvertsMoreThanItsBufferHolds) {
    const std::string many(10'000, '\xFC');
    const std::string converted = survey::ConvertEncoding(many, "ISO-8859-1");
    ASSERT_EQ(converted.size(), 20'000U);
    EXPECT_EQ(converted.substr(19'998), "\xC3\xBC");
}

TEST(Encoding, ReadsWindows1252) {
    EXPECT_EQ(survey::Windows1252ToUtf8("\x80 \xFC\x9F"), "\xE2\x82\xAC \xC3\xBC\xC5\xB8");
    EXPECT_EQ(survey::Windows1252ToUtf8("\x81"), "\xEF\xBF\xBD");
}

TEST(Encoding, ReplacesHalfAPairOfUtf16) {
    using namespace std::string_view_literals;
    EXPECT_EQ(survey::Utf16ToUtf8("\x3D\xD8x\0"sv, survey::ByteOrder::Little), "\xEF\xBF\xBDx");
}

}  // namespace
