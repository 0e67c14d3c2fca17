#include "text/wide_text.h"

#include <gmock/gmock.h>

namespace {

using text::DecodeUtf8;
using text::EncodeUtf8;

struct Decoded {
    const char* name;
    std::string bytes;
    std::wstring text;
};

std::ostream& operator<<(std::ostream& out, const Decoded& row) {
    return out << row.name;
}

class WideText : public testing::TestWithParam<Decoded> {};

TEST_P(WideText, Decodes) {
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
INSTANTIATE_TEST_SUITE_P(, WideText, testing::ValuesIn(kDecoded),
                         [](const auto& row) { return row.param.name; });

TEST(EncodedText, GivesValidBytesAgain) {
    const std::string text = "a\xC3\xA9\xE6\xAD\xA9\xF0\x9F\x9A\xB6";
    EXPECT_EQ(EncodeUtf8(DecodeUtf8(text)), text);
}

TEST(EncodedText, HasTheReplacementForCodesThatAreNoCharacters) {
    const std::wstring text = {L'a', wchar_t(0xDC80), wchar_t(0xD800), wchar_t(0x110000), L'z'};
    EXPECT_EQ(EncodeUtf8(text), "a\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBDz");
}

}  // namespace
