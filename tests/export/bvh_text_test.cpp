// The text of exported .bvh files, line by line.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/export/exported.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;

const std::string kHead =
    "HIERARCHY\nROOT Hips\n{\nOFFSET 1 2 3\nCHANNELS 6 Xposition Yposition "
    "Zposition Zrotation Xrotation Yrotation\n";

std::string Motion(const std::string& rows, int count, const char* frameTime = "0.05") {
    return "MOTION\nFrames: " + std::to_string(count) + "\nFrame Time: " + frameTime + "\n" + rows;
}

TEST(BvhText, WritesTheUsualLayout) {
    ASSERT_TRUE(exported::ImportText(kHead +
                                     "JOINT Leg\n{\nOFFSET 0 -4.5 0\nCHANNELS 1 Xrotation\nEnd "
                                     "Site\n{\nOFFSET 0 -4 0\n}\n}\n}\n" +
                                     Motion("1 2 3 0 0 0 45\n1.5 2 3 10 0 0 90\n", 2)));
    EXPECT_EQ(exported::Export(".bvh"),
              "HIERARCHY\n"
              "ROOT Hips\n"
              "{\n"
              "\tOFFSET 0 0 0\n"
              "\tCHANNELS 6 Xposition Yposition Zposition Zrotation Xrotation Yrotation\n"
              "\tJOINT Leg\n"
              "\t{\n"
              "\t\tOFFSET 0 -4.5 0\n"
              "\t\tCHANNELS 3 Zrotation Xrotation Yrotation\n"
              "\t\tEnd Site\n"
              "\t\t{\n"
              "\t\t\tOFFSET 0 -4 0\n"
              "\t\t}\n"
              "\t}\n"
              "}\n"
              "MOTION\n"
              "Frames: 2\n"
              "Frame Time: 0.05\n"
              "1 2 3 0 0 0 0 45 0\n"
              "1.5 2 3 10 0 0 0 90 0\n");
}

TEST(BvhText, GivesPositionsToJointsThatMove) {
    const std::string leg =
        "JOINT Leg\n{\nOFFSET 0 -4 0\nCHANNELS 6 Xposition Yposition Zposition "
        "Zrotation Xrotation Yrotation\n}\n}\n";
    const std::string standing = "0 0 0 0 0 0  0 -4 0 0 0 0\n";
    ASSERT_TRUE(exported::ImportText(kHead + leg + Motion(standing + standing, 2)));
    EXPECT_THAT(exported::Export(".bvh"), HasSubstr("OFFSET 0 -4 0\n\t\tCHANNELS 3"));
    ASSERT_TRUE(
        exported::ImportText(kHead + leg + Motion(standing + "0 0 0 0 0 0  0 -5 0 0 0 0\n", 2)));
    EXPECT_THAT(exported::Export(".bvh"), HasSubstr("OFFSET 0 -4 0\n\t\tCHANNELS 6"));
}

TEST(BvhText, PutsOneRootAboveSeveral) {
    const std::string hand =
        "ROOT Hand\n{\nOFFSET 9 0 0\nCHANNELS 3 Zrotation Xrotation Yrotation\n}\n";
    ASSERT_TRUE(exported::ImportText(kHead + "}\n" + hand + Motion("1 2 3 0 0 0 0 0 0\n", 1)));
    const std::string text = exported::Export(".bvh");
    EXPECT_THAT(text, StartsWith("HIERARCHY\nROOT take\n{\n\tOFFSET 0 0 0\n\tCHANNELS 6"));
    EXPECT_THAT(text, HasSubstr("\tJOINT Hips\n\t{\n\t\tOFFSET 1 2 3\n"));
    EXPECT_THAT(text, HasSubstr("\tJOINT Hand\n\t{\n\t\tOFFSET 9 0 0\n"));
}

TEST(BvhText, RoundsToTheDigitsAskedFor) {
    ASSERT_TRUE(
        exported::ImportText(kHead + "}\n" + Motion("0.123456789 0 0 0.987654321 0 0\n", 1)));
    EXPECT_THAT(exported::Export(".bvh", {.digits = 2}), HasSubstr("\n0.12 0 0 0.99 0 0\n"));
    EXPECT_THAT(exported::Export(".bvh", {.digits = 9}),
                HasSubstr("\n0.123456789 0 0 0.987654321 0 0\n"));
}

TEST(BvhText, UnrollsAngles) {
    ASSERT_TRUE(exported::ImportText(
        kHead + "}\n" + Motion("0 0 0 170 0 0\n0 0 0 -175 0 0\n0 0 0 -90 0 0\n0 0 0 0 0 0\n", 4)));
    EXPECT_THAT(exported::Export(".bvh"),
                HasSubstr(" 170 0 0\n0 0 0 185 0 0\n0 0 0 270 0 0\n0 0 0 360 0 0\n"));
}

TEST(BvhText, TurnsAndScalesTheRoot) {
    ASSERT_TRUE(exported::ImportText(kHead + "End Site\n{\nOFFSET 0 0 1\n}\n}\n" +
                                     Motion("1 2 3 0 0 0\n", 1)));
    const std::string text = exported::Export(".bvh", {.scale = 2.0, .up = exporters::UpAxis::Z});
    EXPECT_THAT(text, HasSubstr("\n2 6 -4 0 -90 0\n"));
    EXPECT_THAT(text, HasSubstr("OFFSET 0 0 2\n"));
}

TEST(BvhText, WritesOnePoseWhereThereIsNoRate) {
    ASSERT_TRUE(
        exported::ImportText(kHead + "}\n" + Motion("5 6 7 0 0 0\n8 9 10 0 0 0\n", 2, "0")));
    exporters::Notes notes;
    EXPECT_THAT(exported::Export(".bvh", {}, &notes), HasSubstr("Frames: 1\nFrame Time: 0.0333"));
    EXPECT_THAT(notes, testing::ElementsAre(HasSubstr("take: the motion has no frame time")));
    EXPECT_THAT(exported::Export(".bvh", {.framesPerSecond = 10.0}),
                HasSubstr("Frames: 2\nFrame Time: 0.1\n5 6 7 0 0 0\n8 9 10 0 0 0\n"));
}

TEST(BvhText, WritesAModelWithoutJoints) {
    ASSERT_TRUE(exported::ImportText("HIERARCHY\nMOTION\nFrames: 0\nFrame Time: 0.1\n"));
    EXPECT_THAT(exported::Export(".bvh"), StartsWith("HIERARCHY\nROOT take\n"));
}

TEST(BvhText, DoesNotIndentLongChainsForEver) {
    constexpr int kDepth = 20000;
    std::string text = "HIERARCHY\n";
    for (int depth = 0; depth < kDepth; ++depth)
        text += "JOINT J\n{\nOFFSET 0 1 0\nCHANNELS 0\n";
    for (int depth = 0; depth < kDepth; ++depth)
        text += "}\n";
    ASSERT_TRUE(exported::ImportText(text + Motion("", 0)));
    EXPECT_LT(exported::Export(".bvh").size(), std::size_t{kDepth} * 300);
}

TEST(BvhText, KeepsNamesThatAreKeywords) {
    ASSERT_TRUE(exported::ImportText(
        "HIERARCHY\nROOT }\n{\nOFFSET 0 0 0\nCHANNELS 3 Xposition Yposition Zposition\n"
        "JOINT MOTION\n{\nOFFSET 0 1 0\nEnd Site\n{\nOFFSET 0 1 0\n}\n}\n}\n" +
        Motion("1 2 3\n", 1)));
    const std::vector<std::string> before = exported::RecordAll().front().names;
    ASSERT_TRUE(exported::ImportText(exported::Export(".bvh")));
    EXPECT_EQ(exported::RecordAll().front().names, before);
}

// A joint whose positions are near 0, beside an OFFSET. A reader could take the positions for
// relative to OFFSET, so none is written.
TEST(BvhText, LeavesOutOffsetsThatReadersCouldAdd) {
    const std::string file =
        kHead +
        "JOINT Arm\n{\nOFFSET 0 5 0\nCHANNELS 3 Xposition Yposition Zposition\nEnd "
        "Site\n{\nOFFSET 0 1 0\n}\n}\n}\n";
    ASSERT_TRUE(exported::ImportText(file + Motion("9 9 9 0 0 0 0 0 0\n", 1)));
    EXPECT_THAT(exported::Export(".bvh"), HasSubstr("JOINT Arm\n\t{\n\t\tOFFSET 0 0 0\n"));
    ASSERT_TRUE(exported::ImportText(file + Motion("0 0 0 0 0 0 0 4 0\n", 1)));
    EXPECT_THAT(exported::Export(".bvh"), HasSubstr("JOINT Arm\n\t{\n\t\tOFFSET 0 5 0\n"));
}

TEST(BvhText, GivesAStillModelTheFrameTimeOfTheOthers) {
    const std::string still = kHead + "}\nMOTION\nFrames: 0\nFrame Time: 0.5\n";
    const std::string moving = kHead + "}\n" + Motion("0 0 0 0 0 0\n1 0 0 0 0 0\n", 2, "0.2");
    ASSERT_TRUE(exported::ImportText(still + moving));
    const std::string text = exported::Export(".bvh");
    EXPECT_THAT(text, HasSubstr("Frames: 1\nFrame Time: 0.2\n"));
    EXPECT_THAT(text, HasSubstr("Frames: 2\nFrame Time: 0.2\n"));
}

}  // namespace
