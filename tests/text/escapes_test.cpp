#include "text/escapes.h"

#include <gtest/gtest.h>

namespace {

TEST(EscapedControls, AreReadable) {
    EXPECT_EQ(text::EscapeControls(L"a\x1B[2Jb\r\n\t\x7F\x9B\x2028z"),
              L"a\\x1b[2Jb\\r\\n\\t\\x7f\\x9b\\u2028z");
}

// These characters change the direction in which the text after them is read.
TEST(EscapedControls, IncludeCharactersThatChangeTheDirection) {
    EXPECT_EQ(text::EscapeControls(L"a\x202Ez\x2066\x200F\x61C"),
              L"a\\u202ez\\u2066\\u200f\\u061c");
}

TEST(EscapedControls, KeepLineBreaksIfAsked) {
    EXPECT_EQ(text::EscapeControls(L"a\nb\r", true), L"a\nb\\r");
}

TEST(EscapedControls, AreReadableInUtf8) {
    EXPECT_EQ(text::EscapeControls("a\x1B\xC3\xA9\xE9\n"), "a\\x1b\xC3\xA9\xEF\xBF\xBD\\n");
}

}  // namespace
