#include "survey/finding_list.h"

#include <gtest/gtest.h>

#include "survey/codes.h"

namespace {

using survey::Severity;

class FindingListTest : public testing::Test {
  protected:
    const char* At(std::size_t index) const { return source.Text().data() + index; }

    survey::SourceText source{"one\ntwo\nthree"};
    survey::FindingList list{source};
};

TEST_F(FindingListTest, KeepsTheFirstCaseAndCountsTheRest) {
    list.Add({survey::codes::kNameBlank, Severity::Note, At(4), "first", "two", false});
    list.Add({survey::codes::kNameBlank, Severity::Note, At(8), "second", "three", true});
    EXPECT_TRUE(list.AddAgain(survey::codes::kNameBlank, Severity::Note, 3));
    const auto findings = list.Sorted();
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].count, 5U);
    EXPECT_EQ(findings[0].line, 2U);
    EXPECT_EQ(findings[0].column, 1U);
    EXPECT_EQ(findings[0].message, "first");
    EXPECT_EQ(findings[0].joint, "two");
    EXPECT_TRUE(findings[0].mended);
}

TEST_F(FindingListTest, LetsTheFirstOfAHigherSeverityDecide) {
    list.Add({survey::codes::kHierarchyWord, Severity::Note, At(0), "a comment"});
    EXPECT_FALSE(list.AddAgain(survey::codes::kHierarchyWord, Severity::Error));
    list.Add({survey::codes::kHierarchyWord, Severity::Error, At(8), "an unknown word"});
    EXPECT_TRUE(list.HasErrors());
    const auto findings = list.Sorted();
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].message, "an unknown word");
    EXPECT_EQ(findings[0].line, 3U);
    EXPECT_EQ(findings[0].count, 2U);
}

TEST_F(FindingListTest, MakesMessagesReadable) {
    list.Add({survey::codes::kRowCut, Severity::Note, At(0), "\xFC" + std::string(1000, 'x'),
              std::string(1000, 'y')});
    const auto findings = list.Sorted();
    EXPECT_TRUE(findings[0].message.starts_with("\xEF\xBF\xBDxxx"));
    EXPECT_EQ(findings[0].message.size(), 400U);
    EXPECT_EQ(findings[0].joint.size(), 100U);
}

TEST_F(FindingListTest, SortsByPosition) {
    list.Add({survey::codes::kRowCut, Severity::Warning, At(9), "row"});
    list.Add({survey::codes::kNameBlank, Severity::Note, At(1), "name"});
    list.Add({survey::codes::kPositionRelative, Severity::Warning, nullptr, "whole"});
    const auto findings = list.Sorted();
    ASSERT_EQ(findings.size(), 3U);
    EXPECT_EQ(findings[0].message, "whole");
    EXPECT_EQ(findings[0].line, 0U);
    EXPECT_EQ(findings[1].message, "name");
    EXPECT_EQ(findings[2].message, "row");
    EXPECT_FALSE(list.HasErrors());
}

}  // namespace
