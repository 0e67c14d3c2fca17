// Files of extreme shapes. If the cost of an import grew with the square of their size, these tests
// would exceed their time limit.
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "tests/bvh/importer.h"
#include "tests/bvh/samples.h"
#include "tests/support/core/scene_check.h"
#include "tests/support/effort.h"

namespace {

using bvh_test::Importer;
using bvh_test::Options;
using bvh_test::Scene;
using support::StatusText;
using testing::IsEmpty;

// A hundred thousand without the sanitizers.
constexpr int kJoints = 100'000 / support::kShorter;

class BvhExtremes : public testing::TestWithParam<bool> {
  protected:
    void SetUp() override { support::StartSession(false); }
    static Options Skeleton() { return {GetParam()}; }

    static void ExpectImported(const std::string& text) {
        Importer importer(Skeleton());
        ASSERT_EQ(importer.Import(text), 0) << importer.Message();
        EXPECT_THAT(support::SceneProblems(true), IsEmpty());
    }
};

TEST_P(BvhExtremes, TensOfThousandsOfJointsInOneChainAreImported) {
    std::string text = "HIERARCHY\n";
    for (int i = 0; i < kJoints; ++i)
        text += "JOINT j { OFFSET 0 1 0 CHANNELS 1 Xrotation\n";
    text += "End Site { OFFSET 0 1 0 }\n";
    for (int i = 0; i < kJoints; ++i)
        text += '}';
    // A brace is a token only between white space.
    std::string spaced;
    for (const char c : text)
        if (c == '}')
            spaced += "} ";
        else
            spaced += c;
    spaced += "\nMOTION\nFrames: 1\nFrame Time: 1\n";
    for (int i = 0; i < kJoints; ++i)
        spaced += "0.001 ";
    ExpectImported(spaced);
    EXPECT_GT(Scene().Objects().size(), static_cast<std::size_t>(kJoints));
}

TEST_P(BvhExtremes, AHundredThousandJointsThatAreNeverClosedAreRefused) {
    std::string text = "HIERARCHY\n";
    for (int i = 0; i < 100'000; ++i)
        text += "JOINT j { OFFSET 0 1 0\n";
    Importer importer(Skeleton());
    EXPECT_EQ(StatusText(importer.Import(text)), "0x80004005");
    EXPECT_EQ(importer.Message(), "Unexpected end of file");
    EXPECT_EQ(importer.Line(), 100'001u);
}

TEST_P(BvhExtremes, TensOfThousandsOfJointsUnderOneAreImported) {
    std::string text = "HIERARCHY ROOT r { OFFSET 0 0 0\n";
    for (int i = 0; i < kJoints; ++i)
        text += "JOINT j { OFFSET 1 0 0 }\n";
    ExpectImported(text + "} MOTION Frames: 0 Frame Time: 1");
}

// The name of each end site is its parent's name with "_End": a file of some kilobytes would need
// megabytes of names.
TEST_P(BvhExtremes, ThousandsOfNestedEndSitesAreRefusedForTheirNames) {
    std::string text = "HIERARCHY ROOT r { OFFSET 0 0 0\n";
    for (int i = 0; i < 3000; ++i)
        text += "End Site { OFFSET 0 1 0\n";
    Importer importer(Skeleton());
    EXPECT_EQ(StatusText(importer.Import(text)), "0x80004005");
    EXPECT_EQ(importer.Message(),
              "The file asks for more characters of derived names than its size allows (limit " +
                  std::to_string((4 << 20) + 4 * text.size()) + ")");
}

TEST_P(BvhExtremes, TensOfNestedEndSitesAreImported) {
    std::string text = "HIERARCHY ROOT r { OFFSET 0 0 0\n";
    std::string tail = "} ";
    for (int i = 0; i < 80; ++i) {
        text += "End Site { OFFSET 0 1 0\n";
        tail += "} ";
    }
    ExpectImported(text + tail);
}

TEST_P(BvhExtremes, AMillionValuesOnOneLineAreImported) {
    std::string text =
        "HIERARCHY ROOT A { OFFSET 0 1 0 CHANNELS 5 Xposition Yposition Zposition Zrotation "
        "Xrotation End Site { "
        "OFFSET 0 1 0 } } MOTION Frames: 200000 Frame Time: 0.01 ";
    for (int i = 0; i < 1'000'000; ++i)
        text += "1.5 ";
    ExpectImported(text);
    EXPECT_EQ(Scene().Models()[0]->modelData->actions[1]->items[0].GetCurve().keys.Count(),
              200'000u);
}

TEST_P(BvhExtremes, AMillionLineFeedsBetweenTwoTokensAreCounted) {
    Importer importer(Skeleton());
    EXPECT_LT(importer.Import("HIERARCHY" + std::string(1'000'000, '\n') + "}"), 0);
    EXPECT_EQ(importer.Line(), 1'000'000u);
}

TEST_P(BvhExtremes, AThousandSectionsAreImported) {
    std::string text;
    for (int i = 0; i < 1000; ++i)
        text += bvh_test::kOneLine + "\n";
    Importer importer(Skeleton());
    // A single detached root becomes a null with both options.
    ASSERT_EQ(importer.Import(text), 0);
    EXPECT_EQ(importer.GetModelsCount(), 1000u);
    EXPECT_EQ(support::Utf8(importer.GetLastModel().GetName()), "walk999");
    EXPECT_THAT(support::SceneProblems(true), IsEmpty());
}

TEST_P(BvhExtremes, NanInfiniteAndHugeNumbersAreImported) {
    for (const char* number : {"nan", "inf", "-inf", "1e308", "-1e308", "1e999"}) {
        support::StartSession(false);
        ExpectImported(std::string("HIERARCHY ROOT A { OFFSET ") + number + " 0 " + number +
                       " CHANNELS 3 Zrotation Xrotation Yrotation JOINT B { OFFSET 0 " + number +
                       " 0 CHANNELS 1 Xrotation End Site { OFFSET " + number +
                       " 1 1 } } } MOTION Frames: 2 Frame Time: " + number + " " + number + " 0 " +
                       number + " 1 2 3 4 " + number);
    }
}

TEST_P(BvhExtremes, FrameCountsThatNoFileCanHoldAreRefused) {
    for (const char* frames : {"-1", "2147483647", "-2147483648", "1000000000"}) {
        support::StartSession(true);
        Importer importer(Skeleton());
        EXPECT_EQ(StatusText(importer.Import(
                      std::string("HIERARCHY ROOT A { OFFSET 0 0 0 CHANNELS 6 Xposition "
                                  "Yposition Zposition Zrotation Xrotation Yrotation } "
                                  "MOTION Frames: ") +
                      frames + " Frame Time: 1 1 2 3 4 5 6 7 8 9")),
                  "0x80004005");
        EXPECT_EQ(importer.Message(), "Expected a float value in key frame data");
        EXPECT_THAT(support::SceneProblems(false), IsEmpty());
    }
}

TEST_P(BvhExtremes, AFileOfFourGibibytesIsRefused) {
    const support::TemporaryFolder dir;
    const std::string path = dir.Write("huge.bvh", bvh_test::kChain);
    std::filesystem::resize_file(path, std::uintmax_t{1} << 32);
    Importer importer(Skeleton());
    EXPECT_EQ(StatusText(importer.ImportFile(path)), "0x80070002");
    EXPECT_EQ(importer.Message(), "Failed to read BVH file. Specify a valid file name");
}

INSTANTIATE_TEST_SUITE_P(, BvhExtremes, testing::Bool(),
                         [](const auto& row) { return row.param ? "Nulls" : "Bones"; });

}  // namespace
