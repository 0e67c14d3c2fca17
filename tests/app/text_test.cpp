#include "app/text.h"

#include <gmock/gmock.h>

#include "app/locale_setup.h"

namespace {

using app::DecodeUtf8;
using app::EncodeUtf8;

struct Decoded {
    const char* name;
    std::string bytes;
    std::wstring text;
};

std::ostream& operator<<(std::ostream& out, const Decoded& row) {
    return out << row.name;
}

class Utf8 : public testing::TestWithParam<Decoded> {};

TEST_P(Utf8, Decodes) {
    EXPECT_EQ(DecodeUtf8(GetParam().bytes), GetParam().text);
}

const Decoded kDecoded[] = {
    {"Empty", "", L""},
    {"Ascii", "walk.bvh", L"walk.bvh"},
    {"TwoBytes", "\xC3\xA9", L"\x00E9"},
    {"ThreeBytes", "\xE6\xAD\xA9", L"\x6B69"},
    {"FourBytes", "\xF0\x9F\x9A\xB6", L"\x1F6B6"},
    {"LastCode", "\xF4\x8F\xBF\xBF", L"\x10FFFF"},
    {"LoneByte", "a\xE9z", L"a\xDCE9z"},
    {"LoneContinuation", "\x80", L"\xDC80"},
    {"Overlong", "\xC0\xAF", L"\xDCC0\xDCAF"},
    {"OverlongThree", "\xE0\x80\xAF", L"\xDCE0\xDC80\xDCAF"},
    {"EncodedSurrogate", "\xED\xA0\x80", L"\xDCED\xDCA0\xDC80"},
    {"BeyondUnicode", "\xF4\x90\x80\x80", L"\xDCF4\xDC90\xDC80\xDC80"},
    {"NoSuchByte", "\xFF", L"\xDCFF"},
    {"CutShort", "\xE6\xAD", L"\xDCE6\xDCAD"},
    {"CutByAscii", "\xE6z", L"\xDCE6z"},
};
INSTANTIATE_TEST_SUITE_P(, Utf8, testing::ValuesIn(kDecoded),
                         [](const auto& row) { return row.param.name; });

TEST(EncodedText, ReadsBackWhereItWasValid) {
    const std::string text = "a\xC3\xA9\xE6\xAD\xA9\xF0\x9F\x9A\xB6";
    EXPECT_EQ(EncodeUtf8(DecodeUtf8(text)), text);
}

TEST(EncodedText, ShowsAReplacementForWhatIsNoCharacter) {
    const std::wstring text = {L'a', wchar_t(0xDC80), wchar_t(0xD800), wchar_t(0x110000), L'z'};
    EXPECT_EQ(EncodeUtf8(text), "a\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBDz");
}

TEST(EscapedControls, AreReadable) {
    EXPECT_EQ(app::EscapeControls(L"a\x1B[2Jb\r\n\t\x7F\x9B\x2028z"),
              L"a\\x1b[2Jb\\r\\n\\t\\x7f\\x9b\\u2028z");
}

// What follows would be read the other way round.
TEST(EscapedControls, TakeInWhatTurnsTextAround) {
    EXPECT_EQ(app::EscapeControls(L"a\x202Ez\x2066\x200F\x61C"), L"a\\u202ez\\u2066\\u200f\\u061c");
}

TEST(EscapedControls, KeepLineBreaksWhereAsked) {
    EXPECT_EQ(app::EscapeControls(L"a\nb\r", true), L"a\nb\\r");
}

TEST(ElidedText, CountsColumns) {
    app::SetCharacterLocale();
    EXPECT_EQ(app::Elide(L"LeftArm", 7), L"LeftArm");
    EXPECT_EQ(app::Elide(L"LeftArm", 6), L"LeftA\x2026");
    EXPECT_EQ(app::Elide(L"LeftArm", 1), L"\x2026");
    EXPECT_EQ(app::Elide(L"\x5DE6\x8155", 4), L"\x5DE6\x8155");
    EXPECT_EQ(app::Elide(L"\x5DE6\x8155", 3), L"\x5DE6\x2026");
    EXPECT_EQ(app::Elide(L"\x5DE6\x8155", 2), L"\x2026");
    EXPECT_EQ(app::DisplayWidth(L"\x5DE6\x8155g"), 5);
}

}  // namespace
