#include "textio/ascii.h"

#include <gtest/gtest.h>

namespace {

using textio::EqualsIgnoringCase;

TEST(Ascii, ComparesLettersInAnyCase) {
    EXPECT_TRUE(EqualsIgnoringCase("HiErArChY", "hierarchy"));
    EXPECT_TRUE(EqualsIgnoringCase("", ""));
    EXPECT_TRUE(EqualsIgnoringCase("AZaz09", "azAZ09"));
}

TEST(Ascii, ComparesWholeTexts) {
    EXPECT_FALSE(EqualsIgnoringCase("JOINT", "JOINTS"));
    EXPECT_FALSE(EqualsIgnoringCase("JOINTS", "JOINT"));
    EXPECT_FALSE(EqualsIgnoringCase("", "x"));
    EXPECT_FALSE(EqualsIgnoringCase("x", ""));
}

// '@' and '`', '[' and '{' differ by the same bit as a letter's two cases.
TEST(Ascii, DistinguishesPunctuationThatDiffersInTheBitOfLetterCase) {
    EXPECT_FALSE(EqualsIgnoringCase("@", "`"));
    EXPECT_FALSE(EqualsIgnoringCase("[", "{"));
}

TEST(Ascii, LeavesOtherBytesAlone) {
    EXPECT_FALSE(EqualsIgnoringCase("\xC4", "\xE4"));
    EXPECT_TRUE(EqualsIgnoringCase("\xC3\x84", "\xC3\x84"));
}

}  // namespace
