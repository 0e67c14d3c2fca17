#include "headless/name_table.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <vector>

namespace {

using headless::NameTable;

std::wstring Wide(const Zelk::CString& text) {
    return {text.GetWideString(), text.Length()};
}

// Reserves `name` and gets `given`. If `given` is null, `name` is freed.
struct Step {
    const wchar_t* name;
    const wchar_t* given = nullptr;
};

struct Story {
    const char* name;
    std::vector<Step> steps;
};

std::ostream& operator<<(std::ostream& out, const Story& story) {
    return out << story.name;
}

const Story kStories[] = {
    {"KeepsAFreeName", {{L"Hand", L"Hand"}, {L"Foot", L"Foot"}}},
    {"AppendsTheSmallestNumber", {{L"Hand", L"Hand"}, {L"Hand", L"Hand1"}, {L"Hand", L"Hand2"}}},
    {"SkipsNumbersInUse",
     {{L"Hand", L"Hand"},
      {L"Hand1", L"Hand1"},
      {L"Hand3", L"Hand3"},
      {L"Hand", L"Hand2"},
      {L"Hand", L"Hand4"}}},
    {"NumbersANameThatEndsInANumber",
     {{L"Hand1", L"Hand1"}, {L"Hand1", L"Hand11"}, {L"Hand1", L"Hand12"}}},
    {"TellsLettersOfAnotherCaseApart", {{L"Hand", L"Hand"}, {L"hand", L"hand"}}},
    {"GivesAFreedNameAgain",
     {{L"Hand", L"Hand"}, {L"Hand", L"Hand1"}, {L"Hand"}, {L"Hand", L"Hand"}, {L"Hand", L"Hand2"}}},
    {"GivesAFreedNumberAgain",
     {{L"Hand", L"Hand"},
      {L"Hand", L"Hand1"},
      {L"Hand", L"Hand2"},
      {L"Hand", L"Hand3"},
      {L"Hand1"},
      {L"Hand", L"Hand1"},
      {L"Hand", L"Hand4"}}},
    {"GivesTheSmallestFreedNumberFirst",
     {{L"a", L"a"},
      {L"a", L"a1"},
      {L"a", L"a2"},
      {L"a", L"a3"},
      {L"a3"},
      {L"a1"},
      {L"a", L"a1"},
      {L"a", L"a3"},
      {L"a", L"a4"}}},
    {"ForgetsAFreedNumberThatWasTakenByItsFullName",
     {{L"a", L"a"}, {L"a", L"a1"}, {L"a", L"a2"}, {L"a1"}, {L"a1", L"a1"}, {L"a", L"a3"}}},
    {"FreesANameThatWasTakenByItsFullName",
     {{L"a", L"a"}, {L"a1", L"a1"}, {L"a", L"a2"}, {L"a1"}, {L"a", L"a1"}}},
    {"GivesNoFreedNumberBeforeASmallerOne",
     {{L"a", L"a"}, {L"a", L"a1"}, {L"a5", L"a5"}, {L"a5"}, {L"a", L"a2"}, {L"a", L"a3"}}},
    {"FreesANameForEveryReadingOfItsNumber",
     {{L"a", L"a"}, {L"a1", L"a1"}, {L"a1", L"a11"}, {L"a11"}, {L"a1", L"a11"}}},
    {"FreesAllDigitsForTheShorterName",
     {{L"a", L"a"},
      {L"a", L"a1"},
      {L"a", L"a2"},
      {L"a", L"a3"},
      {L"a", L"a4"},
      {L"a", L"a5"},
      {L"a", L"a6"},
      {L"a", L"a7"},
      {L"a", L"a8"},
      {L"a", L"a9"},
      {L"a", L"a10"},
      {L"a10"},
      {L"a", L"a10"}}},
    {"TakesNoNumberWithALeadingZeroForOne",
     {{L"a", L"a"}, {L"a01", L"a01"}, {L"a", L"a1"}, {L"a01"}, {L"a", L"a2"}, {L"a01", L"a01"}}},
    {"CountsAfterAZero", {{L"a0", L"a0"}, {L"a0", L"a01"}, {L"a01"}, {L"a0", L"a01"}}},
    {"NumbersDigits", {{L"7", L"7"}, {L"7", L"71"}, {L"71"}, {L"7", L"71"}}},
    {"SurvivesMoreDigitsThanANumberHas",
     {{L"99999999999999999999999", L"99999999999999999999999"},
      {L"99999999999999999999999", L"999999999999999999999991"},
      {L"99999999999999999999999"},
      {L"99999999999999999999999", L"99999999999999999999999"}}},
    {"KeepsEveryCharacter",
     {{L"mixamorig:Hips", L"mixamorig:Hips"},
      {L"pelvis.R", L"pelvis.R"},
      {L"腰", L"腰"},
      {L"腰", L"腰1"},
      {L"a\tb c", L"a\tb c"}}},
    {"FreesOnlyWhatIsTaken", {{L"a", L"a"}, {L"b"}, {L"a1"}, {L"a", L"a1"}, {L"b", L"b"}}},
};

class NameTableStory : public testing::TestWithParam<Story> {};

TEST_P(NameTableStory, Holds) {
    NameTable table;
    std::uint32_t id = 0;
    for (const Step& step : GetParam().steps) {
        if (step.given == nullptr) {
            table.Free(step.name);
            EXPECT_EQ(table.Find(step.name), 0u);
            continue;
        }
        const Zelk::CString given = table.Reserve(step.name, ++id);
        EXPECT_EQ(Wide(given), step.given);
        EXPECT_EQ(table.Find(Wide(given)), id);
    }
}

INSTANTIATE_TEST_SUITE_P(, NameTableStory, testing::ValuesIn(kStories),
                         [](const auto& row) { return row.param.name; });

TEST(NameTable, FindsNothingInAnEmptyTable) {
    EXPECT_EQ(NameTable().Find(L"Hand"), 0u);
}

TEST(NameTable, SharesTheTextOfANameThatItLeavesAsItIs) {
    NameTable table;
    const Zelk::CString name(L"Hand");
    EXPECT_EQ(table.Reserve(name, 1).GetWideString(), name.GetWideString());
}

TEST(NameTable, NumbersManyEqualNamesInOrder) {
    NameTable table;
    EXPECT_EQ(Wide(table.Reserve(L"a", 1)), L"a");
    for (std::uint32_t number = 1; number < 100'000; ++number)
        ASSERT_EQ(Wide(table.Reserve(L"a", number + 1)), L"a" + std::to_wstring(number));
    for (std::uint32_t number = 1; number < 100'000; number += 2)
        table.Free(Zelk::CString((L"a" + std::to_wstring(number)).c_str()));
    for (std::uint32_t number = 1; number < 100'000; number += 2)
        ASSERT_EQ(Wide(table.Reserve(L"a", number)), L"a" + std::to_wstring(number));
}

}  // namespace
