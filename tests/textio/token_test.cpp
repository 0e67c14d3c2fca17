#include <cstdint>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <vector>

#include "tests/textio/loaded.h"

namespace {

using textio_test::Load;

constexpr const char* kDefaultSet = "\t\r\n ";
constexpr const char* kAcclaimSet = "\t\r\n (),";

struct TokenRow {
    const char* name;
    const char* separators;
    std::string bytes;
    std::vector<std::string> tokens;
};
std::ostream& operator<<(std::ostream& out, const TokenRow& row) {
    return out << row.name;
}

const TokenRow kTokenRows[] = {
    {"OnlySeparators", kDefaultSet, " \t\r\n\n ", {}},
    {"OneWord", kDefaultSet, "word", {"word"}},
    {"LastWithoutSeparator", kDefaultSet, "a bc", {"a", "bc"}},
    {"LastWithSeparator", kDefaultSet, "a bc\n", {"a", "bc"}},
    {"LeadingSeparators", kDefaultSet, "\r\n\t a", {"a"}},
    {"WindowsLines", kDefaultSet, "a\r\nb\r\n", {"a", "b"}},
    {"OldMacLines", kDefaultSet, "a\rb\r", {"a", "b"}},
    {"BracesStickToWords", kDefaultSet, "ROOT{ }", {"ROOT{", "}"}},
    {"ParenthesesStayByDefault", kDefaultSet, "(1,2)", {"(1,2)"}},
    {"ParenthesesAndCommasGo", kAcclaimSet, "(1,2)", {"1", "2"}},
    {"AcclaimSpaces", kAcclaimSet, " ( -160.0 , 20.0 )\n", {"-160.0", "20.0"}},
    {"OtherWhiteSpaceStays", kDefaultSet, "a\vb\fc", {"a\vb\fc"}},
    {"ByteOrderMarkStays", kDefaultSet, "\xEF\xBB\xBFHIERARCHY x", {"\xEF\xBB\xBFHIERARCHY", "x"}},
    {"InvalidMultibyteText", kDefaultSet, "\xFF\xFE \x80", {"\xFF\xFE", "\x80"}},
    {"Japanese", kDefaultSet, "\xE5\x8F\xB3 \xE8\x85\x95", {"\xE5\x8F\xB3", "\xE8\x85\x95"}},
    {"NulEndsAWord", kDefaultSet, std::string("ab\0cd ef", 8), {"ab"}},
    {"NulAfterASeparator", kDefaultSet, std::string("ab \0cd", 6), {"ab"}},
    {"NulFirst", kDefaultSet, std::string("\0ab cd", 6), {}},
    {"NulLast", kDefaultSet, std::string("ab\0", 3), {"ab"}},
    {"HighBytesAsSeparators", "\xFF|", "a\xFF|b", {"a", "b"}},
};

class TokenTable : public testing::TestWithParam<TokenRow> {};

TEST_P(TokenTable, GivesEveryTokenThenNullAtTheEnd) {
    const TokenRow& row = GetParam();
    const auto reader = Load(row.bytes, row.separators);
    std::vector<std::string> tokens;
    while (const char* token = reader->GetNextString())
        tokens.emplace_back(token);
    EXPECT_EQ(tokens, row.tokens);
    EXPECT_EQ(reader->GetPosition(), reader->GetSize());
    EXPECT_EQ(reader->GetSize(), row.bytes.size());
    EXPECT_EQ(reader->GetNextString(), nullptr);
}

TEST_P(TokenTable, PeeksTheTokenThatComesNext) {
    const TokenRow& row = GetParam();
    const auto reader = Load(row.bytes, row.separators);
    for (const std::string& expected : row.tokens) {
        const std::uint32_t before = reader->GetPosition();
        const char* const peeked = reader->PeekNextString();
        ASSERT_NE(peeked, nullptr);
        EXPECT_EQ(peeked, expected);
        EXPECT_EQ(reader->GetPosition(), before);
        EXPECT_STREQ(reader->GetNextString(), expected.c_str());
    }
    EXPECT_EQ(reader->PeekNextString(), nullptr);
    EXPECT_EQ(reader->GetPosition(), reader->GetSize());
}

INSTANTIATE_TEST_SUITE_P(, TokenTable, testing::ValuesIn(kTokenRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(Tokens, StopAtTheSeparatorWhichTheNextCallSkips) {
    const auto reader = Load("ab  cd ");
    EXPECT_STREQ(reader->GetNextString(), "ab");
    EXPECT_EQ(reader->GetPosition(), 2u);
    EXPECT_STREQ(reader->GetNextString(), "cd");
    EXPECT_EQ(reader->GetPosition(), 6u);
    EXPECT_EQ(reader->GetNextString(), nullptr);
    EXPECT_EQ(reader->GetPosition(), 7u);
}

TEST(Tokens, MayBeAsLongAsTheFile) {
    const std::string word(1'000'000, 'x');
    const auto reader = Load(word);
    EXPECT_EQ(reader->GetNextString(), word);
}

TEST(Separators, AreTabReturnFeedAndSpaceByDefault) {
    const auto reader = Load("a\tb\rc\nd e");
    for (const char* expected : {"a", "b", "c", "d", "e"})
        EXPECT_STREQ(reader->GetNextString(), expected);
}

TEST(Separators, RefuseAnEmptySetAndKeepTheOldOne) {
    CStringFile reader;
    EXPECT_TRUE(reader.RegisterWhiteSpaces(","));
    EXPECT_FALSE(reader.RegisterWhiteSpaces(""));
    const support::TemporaryFolder dir;
    ASSERT_TRUE(reader.ReadFile(textio_test::Wide(dir.Write("f", "a b,c")).c_str()));
    EXPECT_STREQ(reader.GetNextString(), "a b");
    EXPECT_STREQ(reader.GetNextString(), "c");
}

TEST(Separators, StayWhenTheFileIsCleared) {
    const support::TemporaryFolder dir;
    const std::wstring path = textio_test::Wide(dir.Write("f", "a;b c"));
    CStringFile reader;
    ASSERT_TRUE(reader.RegisterWhiteSpaces(";"));
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(reader.ReadFile(path.c_str()));
        EXPECT_STREQ(reader.GetNextString(), "a");
        EXPECT_STREQ(reader.GetNextString(), "b c");
        reader.ClearFile();
    }
}

TEST(Position, MovesOnlyInsideTheFile) {
    const auto reader = Load("abc def");
    EXPECT_TRUE(reader->SetPosition(6));
    EXPECT_EQ(reader->GetPosition(), 6u);
    EXPECT_FALSE(reader->SetPosition(reader->GetSize()));
    EXPECT_FALSE(reader->SetPosition(0xFFFFFFFF));
    EXPECT_EQ(reader->GetPosition(), 6u);
    EXPECT_STREQ(reader->GetNextString(), "f");
    EXPECT_TRUE(reader->SetPosition(0));
    EXPECT_STREQ(reader->GetNextString(), "abc");
}

TEST(Position, CanBeSetAfterTheEndWasReached) {
    const auto reader = Load("a b");
    while (reader->GetNextString() != nullptr) {
    }
    EXPECT_TRUE(reader->SetPosition(2));
    EXPECT_STREQ(reader->GetNextString(), "b");
}

TEST(Position, CanBeSetAfterANulByte) {
    const auto reader = Load(std::string("a\0b c", 5));
    EXPECT_STREQ(reader->GetNextString(), "a");
    EXPECT_EQ(reader->GetPosition(), 5u);
    ASSERT_TRUE(reader->SetPosition(2));
    EXPECT_STREQ(reader->GetNextString(), "b");
}

TEST(EmptyReader, GivesNoTokensNumbersOrLines) {
    CStringFile reader;
    int whole = 7;
    double real = 7.0;
    EXPECT_EQ(reader.GetNextString(), nullptr);
    EXPECT_EQ(reader.PeekNextString(), nullptr);
    EXPECT_FALSE(reader.GetNextInt(whole));
    EXPECT_FALSE(reader.GetNextFloat(real));
    EXPECT_EQ(whole, 7);
    EXPECT_EQ(real, 7.0);
    EXPECT_FALSE(reader.GotoNextLine());
    EXPECT_FALSE(reader.SetPosition(0));
    EXPECT_EQ(reader.GetCurrentLine(), 0u);
    EXPECT_EQ(reader.GetCurrentColumn(), 0u);
    EXPECT_EQ(reader.GetPosition(), 0u);
    EXPECT_EQ(reader.GetSize(), 0u);
    EXPECT_EQ(reader.GetBuffer(), nullptr);
    reader.ClearFile();
    EXPECT_EQ(reader.GetSize(), 0u);
}

}  // namespace
