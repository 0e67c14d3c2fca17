// Findings and mended texts of ASF files, one row for each case.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "survey/codes.h"
#include "tests/survey/acclaim_case.h"

namespace asf_findings_test {

using namespace acclaim_case;
using namespace survey::codes;
using survey::Severity;
using testing::HasSubstr;

struct Row {
    const char* name;
    const char* old;  // in the clean skeleton; null if `replacement` is the whole skeleton
    const char* replacement;
    std::vector<Told> told;
    // Part of the mended text; null if there must be none.
    const char* mended = nullptr;
};

constexpr auto kNote = Severity::Note;
constexpr auto kWarning = Severity::Warning;
constexpr auto kError = Severity::Error;

const Row kRows[] = {
    {"Archive", "length 1.0", "length 0.45", {{kPresetCmu, kNote, 6}}},
    {"ArchiveLonger", "length 1.0", "length 0.450000", {{kPresetCmu, kNote, 6}}},
    {"LengthUnit", "length 1.0", "length 2.54", {{kLengthUnit, kNote, 6}}},
    {"BoneShort", "length 20", "length 0.0004", {{kBoneShort, kNote, 29, false, 1, "larm"}}},
    {"NoLengthIsNotShort", "length 20", "length 0", {}},
    {"MassText", "mass 1.0", "mass kg", {{kUnitsText, kNote, 5, true}}, "mass 1.0"},
    {"LengthText", "length 1.0", "length m", {{kUnitsText, kNote, 6, true}}, "length 1.0"},
    {"LengthMissing", "length 1.0", "length", {{kUnitsText, kNote, 6, true}}, "length 1.0"},
    {"LengthOfNothing", "length 1.0", "length 0", {{kUnitsText, kNote, 6, true}}, "length 1.0"},
    {"AngleWord", "angle deg", "angle grad", {{kUnitsText, kNote, 7, true}}, "angle deg"},
    {"AngleLongWord", "angle deg", "angle degrees", {}, "angle deg\n"},
    {"NameEmpty", ":name figure", ":name", {{kNameEmpty, kNote, 3, true}}, ":name walk\n"},
    {"NameBlank", ":name figure", ":name a b", {{kNameBlank, kNote, 3, true}}, ":name a_b\n"},
    {"NoName", ":name figure\n", "", {}},
    {"DocumentationColon",
     "three bones.",
     "three bones fps:30",
     {{kDocumentationColon, kNote, 9, true}},
     "three bones fps 30\n"},
    {"KeywordUnknown",
     ":root",
     ":skin\n a b\n:root",
     {{kKeywordUnknown, kNote, 10, true}},
     "three bones.\n:root"},
    {"KeywordUnknownAlone", ":root", ":skin\n:root", {{kKeywordUnknown, kNote, 10}}},
    {"UnitsUnknown", "mass 1.0", "weight 1.0", {{kKeywordUnknown, kNote, 5, true}}, "mass 1.0"},
    {"RootUnknown",
     "  axis XYZ",
     "  colour red\n  axis XYZ",
     {{kKeywordUnknown, kNote, 12, true}},
     ":root\n  order"},
    {"VersionMissing", ":version 1.10\n", "", {}, ":version 1.10\n:name figure"},
    {"VersionLater",
     ":version 1.10\n:name figure",
     ":name figure\n:version 1.20",
     {},
     ":version 1.20\n:name figure"},
    {"VersionOld", ":version 1.10", ":version 0.9", {}, ":version 1.10"},
    {"VersionText", ":version 1.10", ":version new", {}, ":version 1.10"},
    {"OddZero", "position 0 0 0", "position .0 +0 -.0", {}, "position 0 0 0\n"},
    {"LimitsBeforeDof",
     "    dof rx ry rz\n    limits (-60 60)\n           (-60 60)\n           (-60 60)\n",
     "    limits (-60 60) (-60 60) (-50 60)\n    dof rx ry rz\n",
     {},
     "dof rx ry rz\n    limits (-60 60)\n           (-60 60)\n           (-50 60)\n"},
    {"DofOnTwoLines", "dof rx ry rz", "dof rx\n      ry rz", {}, "dof rx ry rz\n"},
    {"EndMissing",
     "limits (-60 60)\n           (-60 60)\n           (-60 60)\n  end",
     "limits (-60 60)\n           (-60 60)\n           (-60 60)",
     {},
     "(-60 60)\n  end\n  begin"},
    {"HierarchyBeginMissing", ":hierarchy\n  begin", ":hierarchy", {}, ":hierarchy\n  begin\n"},
    {"HierarchyEndMissing", "larm rarm\n  end", "larm rarm", {}, "larm rarm\n  end\n"},
    {"ChildTwice", "larm rarm", "larm rarm rarm", {}, "spine larm rarm\n"},
    {"HierarchyChildFirst",
     "root spine\n    spine larm rarm",
     "spine larm rarm\n    root spine",
     {{kHierarchyOrder, kNote, 44, true, 2}},
     "root spine\n    spine larm rarm\n"},
    {"HierarchyUnknown",
     "larm rarm",
     "larm rarm tail",
     {{kHierarchyUnknown, kError, 45, false, 1, "tail"}}},
    {"HierarchyUnknownParent",
     "spine larm rarm",
     "spine larm\n tail rarm",
     {{kHierarchyUnknown, kError, 46, false, 1, "tail"}}},
    {"HierarchyCycle",
     "spine larm rarm",
     "spine rarm\n larm larm",
     {{kHierarchyCycle, kError, 46, false, 1, "larm"}}},
    {"HierarchyOfANumber",
     "    root spine",
     "    1.0 spine",
     {{kHierarchyUnknown, kError, 44, false, 1, "1.0"}}},
    {"HierarchyCycleOfSeveral",
     "spine larm rarm",
     "spine larm rarm\n larm spine",
     {{kHierarchyCycle, kError, 46, false, 1, "spine"}}},
    {"HierarchyRootAsChild",
     "larm rarm",
     "larm rarm root",
     {{kHierarchyCycle, kError, 45, false, 1, "root"}}},
    {"TwoParents",
     "spine larm rarm",
     "spine larm rarm\n larm rarm",
     {{kBoneDuplicate, kError, 46, false, 1, "rarm"}}},
    {"BoneDuplicate",
     "name rarm",
     "name LARM",
     {{kBoneDuplicate, kError, 37, false, 1, "LARM"},
      {kHierarchyUnknown, kError, 45, false, 1, "rarm"}}},
    {"BoneUnattached", "larm rarm", "larm", {{kBoneUnattached, kNote, 37, false, 1, "rarm"}}},
    {"BoneNameMissing",
     "    name rarm\n",
     "",
     {{kNameMissing, kError, 35}, {kHierarchyUnknown, kError, 44, false, 1, "rarm"}}},
    {"BoneNameOfAKeyword",
     "name rarm",
     "name :rarm",
     {{kNameMissing, kError, 37, false, 1, ":rarm"},
      {kHierarchyUnknown, kError, 45, false, 1, "rarm"}}},
    {"DofLength",
     "dof rx ry rz",
     "dof rx ry rz l",
     {{kNumberBad, kError, 23, false, 1, "spine"}, {kDofLength, kNote, 22, true, 1, "spine"}}},
    {"DofTranslation", "dof rz", "dof rz tx", {}},
    {"DofUnknown", "dof rz", "dof rz rw", {{kNumberBad, kError, 33, false, 1, "larm"}}},
    {"DofTwice", "dof rz", "dof rz RZ", {{kNumberBad, kError, 33, false, 1, "larm"}}},
    {"OrderUnknown", "order TX", "order TW", {{kNumberBad, kError, 11}}},
    {"DirectionFewer",
     "direction 1 0 0",
     "direction 1 0",
     {{kNumberBad, kError, 30, false, 1, "larm"}}},
    {"DirectionMore",
     "direction 1 0 0",
     "direction 1 0 0 0",
     {{kNumberBad, kError, 30, false, 1, "larm"}}},
    {"DirectionWord",
     "direction 1 0 0",
     "direction 1 up 0",
     {{kNumberBad, kError, 30, false, 1, "larm"}}},
    {"DirectionNotFinite",
     "direction 1 0 0",
     "direction 1 nan 0",
     {{kNumberBad, kError, 30, false, 1, "larm"}}},
    {"LengthWord", "length 20", "length long", {{kNumberBad, kError, 31, false, 1, "larm"}}},
    {"AxisFewer", "axis 10 20 30", "axis 10 20", {{kNumberBad, kError, 32, false, 1, "larm"}}},
    {"AxisWord",
     "axis 10 20 30 XYZ",
     "axis 10 20 30 XYX",
     {{kNumberBad, kError, 32, false, 1, "larm"}}},
    {"AxisOrderMissing",
     "axis 10 20 30 XYZ",
     "axis 10 20 30",
     {{kNumberBad, kError, 32, false, 1, "larm"}}},
    {"PositionFewer", "position 0 0 0", "position 0 0", {{kNumberBad, kError, 13}}},
    {"OrientationWord", "orientation 0 0 0", "orientation a 0 0", {{kNumberBad, kError, 14}}},
    {"LimitWord", "(-60 60)", "(-60 far)", {{kNumberBad, kError, 23, false, 1, "spine"}}},
    {"LimitNan", "(-60 60)", "(-60 nan)", {{kNumberBad, kError, 23, false, 1, "spine"}}},
    {"LimitOdd", "(-60 60)", "(-60)", {{kNumberBad, kError, 23, false, 1, "spine"}}},
    {"LimitsFewer",
     "(-60 60)\n           (-60 60)",
     "(-60 60)",
     {{kNumberBad, kError, 23, false, 1, "spine"}}},
    {"LimitOverflow", "(-60 60)", "(-1e999 60)", {}},
    {"Glued",
     "direction -0.6 0.8 0",
     "direction -0.6 0.8-0.0",
     {{kNumberGlued, kWarning, 38, true, 1, "rarm"}},
     "direction -0.6 0.8 -0.0\n"},
    {"AxisOrder",
     "axis 10 20 30 XYZ",
     "axis 0 90 0 YXZ",
     {{kAxisOrder, kNote, 32, true, 1, "larm"}},
     "axis 90 0 0 XYZ"},
    {"RootAxisOrder",
     "axis XYZ",
     "axis ZYX",
     {{kAxisOrder, kNote, 12, true, 1, "root"}},
     "axis XYZ"},
    {"DirectionLength",
     "direction 1 0 0",
     "direction 0 0 2",
     {{kDirectionLength, kWarning, 30, true, 1, "larm"}},
     "direction 0 0 1\n"},
    {"DirectionWithin", "direction 1 0 0", "direction 1.01 0 0", {}},
    {"DirectionNone",
     "direction 1 0 0",
     "direction 0 0 0",
     {{kDirectionLength, kWarning, 30, false, 1, "larm"}}},
    {"Empty", nullptr, "", {{kEmpty, kError}}},
    {"NotAsf", nullptr, "HIERARCHY\nROOT Hips\n", {{kNotAsf, kError}}},
    {"SkeletonInStoredData", "# a figure", "\x1F\x8B\x08 stored", {{kNotAsf, kError}}},
    {"Mark", ":name", "\xEF\xBB\xBF:name", {{kKeywordUnknown, kNote, 3, true}}, ":version"},
    {"NameInAnotherEncoding",
     "name rarm",
     "name r\xE4rm",
     {{kTextEncoding, kWarning, 37, true, 1, "r\xC3\xA4rm"},
      {kHierarchyUnknown, kError, 45, false, 1, "rarm"}}},
    {"DocumentationInAnotherEncoding",
     "three bones",
     "three b\xF6nes",
     {{kTextEncoding, kNote, 9, true}},
     "three b\xC3\xB6nes"},
    {"CommentInAnotherEncoding", "a figure", "a f\xEDgure", {{kTextEncoding, kNote, 1}}},
    {"TrailingControl", "larm rarm\n  end\n", "larm rarm\n  end\n\x1A", {}, ":version"},
};

class AsfFinding : public testing::TestWithParam<Row> {};

TEST_P(AsfFinding, IsReportedAndMended) {
    const Row& row = GetParam();
    const std::string asf =
        row.old ? With(CleanAsf(), row.old, row.replacement) : std::string(row.replacement);
    const survey::Purpose purpose = row.mended ? PurposeThatWrites(row.told) : survey::Purpose::Fix;
    const auto found = Survey(asf, CleanAmc(), For(purpose));
    if (purpose == survey::Purpose::Import) {
        EXPECT_FALSE(Survey(asf, CleanAmc(), For(survey::Purpose::Fix)).skeleton.mended);
    }
    ExpectFindings(found.skeleton.findings, row.told);
    ASSERT_EQ(found.skeleton.mended != nullptr, row.mended != nullptr)
        << (row.mended ? "" : found.skeleton.mended->Text());
    if (!row.mended) return;
    EXPECT_THAT(found.skeleton.mended->Text(), HasSubstr(row.mended));
    const auto again = Survey(found.skeleton.mended->Text(), CleanAmc(), For(purpose));
    EXPECT_FALSE(again.skeleton.mended) << again.skeleton.mended->Text();
    for (const auto& finding : again.skeleton.findings)
        EXPECT_FALSE(finding.mended) << finding.code;
}

INSTANTIATE_TEST_SUITE_P(, AsfFinding, testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.name; });

}  // namespace asf_findings_test
