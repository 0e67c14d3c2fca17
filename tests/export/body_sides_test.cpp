#include "export/body_sides.h"

#include <gtest/gtest.h>

namespace body_sides_test {

using exporters::Side;

struct Row {
    const char* name;
    const wchar_t* left;
    const wchar_t* right;
    bool areSides;
};

const Row kRows[] = {
    {"Words", L"LeftArm", L"RightArm", true},
    {"WordsInside", L"mixamorig:LeftUpLeg", L"mixamorig:RightUpLeg", true},
    {"SmallWords", L"hand_left", L"hand_right", true},
    {"FirstLetter", L"lfemur", L"rfemur", true},
    {"FirstCapital", L"LThumb", L"RThumb", true},
    {"FirstLetterAfterAColon", L"rig:lArm", L"rig:rArm", true},
    {"LastLetter", L"hand_l", L"hand_r", true},
    {"LastCapitalAfterADot", L"Arm.L", L"Arm.R", true},
    {"LetterBeforeAnEnd", L"toe_l_End", L"toe_r_End", true},
    {"WordsAndNumbers", L"LeftHip-23", L"RightHip-18", true},
    {"WordsAndNumbersOfEnds", L"LeftHip-23_End", L"RightHip-18_End", true},
    {"NoMirror", L"lowerback", L"upperback", false},
    {"OtherNames", L"Spine", L"Neck", false},
    {"LetterInside", L"elbow", L"erbow", false},
};

class BodySides : public testing::TestWithParam<Row> {};

TEST_P(BodySides, AreFoundByNamesThatMirrorEachOther) {
    const auto sides = exporters::SidesOf({L"Hips", GetParam().left, GetParam().right});
    EXPECT_EQ(sides[0], Side::Middle);
    EXPECT_EQ(sides[1], GetParam().areSides ? Side::Left : Side::Middle);
    EXPECT_EQ(sides[2], GetParam().areSides ? Side::Right : Side::Middle);
}

INSTANTIATE_TEST_SUITE_P(, BodySides, testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.name; });

}  // namespace body_sides_test
