#include "acclaim/node_names.h"

#include <gtest/gtest.h>

namespace {

TEST(NodeNames, AreFoundInAnyLetterCase) {
    NodeNames names;
    names.Add("LeftArm", 3);
    EXPECT_EQ(names.Find("leftARM"), 3u);
    EXPECT_EQ(names.Find("leftArm "), NodeNames::kNone);
    EXPECT_EQ(names.Find(""), NodeNames::kNone);
}

// Letters of other alphabets are bytes like any other.
TEST(NodeNames, IgnoreTheCaseOfAsciiLettersOnly) {
    NodeNames names;
    names.Add("\xC4", 1);
    EXPECT_EQ(names.Find("\xE4"), NodeNames::kNone);
    EXPECT_EQ(names.Find("\xC4"), 1u);
}

TEST(NodeNames, FindTheLowestIndexOfEqualNames) {
    NodeNames names;
    names.Add("a", 7);
    names.Add("A", 2);
    names.Add("a", 5);
    EXPECT_EQ(names.Find("a"), 2u);
    names.RemoveFirst("a");
    EXPECT_EQ(names.Find("a"), 5u);
    names.RemoveFirst("A");
    EXPECT_EQ(names.Find("a"), 7u);
    names.RemoveFirst("a");
    EXPECT_EQ(names.Find("a"), NodeNames::kNone);
}

TEST(NodeNames, AreRemovedByClear) {
    NodeNames names;
    names.Add("a", 1);
    names.Clear();
    EXPECT_EQ(names.Find("a"), NodeNames::kNone);
}

}  // namespace
