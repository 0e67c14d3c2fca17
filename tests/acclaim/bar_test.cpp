// What whole imports send to the host's progress bar, and what pressing its cancel button does.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "headless/session.h"
#include "headless/testing.h"
#include "host/status.h"
#include "tests/support/acclaim/acclaim_texts.h"
#include "tests/support/core/scene_check.h"
#include "tests/support/core/session_text.h"

namespace {

using namespace support;
using testing::ElementsAre;
using testing::IsEmpty;

class AcclaimBar : public testing::Test {
  protected:
    void SetUp() override { StartSession(true); }
    void ImportSampleSkeleton(bool nulls) {
        importer.SetOptions(nulls, true, false, true);
        ASSERT_EQ(ImportSkeleton(importer, kSampleAsf), Outcome());
    }
    void ImportSampleMotion() { ASSERT_EQ(ImportMotion(importer, kSampleAmc), Outcome()); }

    CAcclaimImport importer;
};

TEST_F(AcclaimBar, RunsToItsEndWithASkeleton) {
    ImportSampleSkeleton(true);
    EXPECT_THAT(BarLines(), ElementsAre("minimum 0", "maximum 32000", "step 1", "value 0",
                                        "caption Importing Acclaim Skeleton...", "visible 1",
                                        "value 1829",   // name: 2 of 35
                                        "value 4571",   // root: 3
                                        "value 10057",  // bones: 6
                                        "value 13714",  // hierarchy: 4
                                        "caption Creating Zelk model...",
                                        "value 18286",  // base pose: 5
                                        "value 32000",  // skeleton and group: 15
                                        "visible 0"));
}

TEST_F(AcclaimBar, MovesOnlyForSectionsOfTheFile) {
    ASSERT_EQ(ImportSkeleton(importer, ":version 1\n:bonedata"), Outcome());
    EXPECT_EQ(BarLines()[6], "value 5486");
    EXPECT_EQ(BarLines()[7], "caption Creating Zelk model...");
}

// There is one poll for each section and one before the scene is changed.
TEST_F(AcclaimBar, CancelsASkeletonAtEachPoll) {
    for (std::uint64_t poll = 1; poll <= 7; ++poll) {
        StartSession(true);
        headless::PressCancelAtPoll(poll);
        CAcclaimImport cancelled;
        const Outcome outcome = ImportSkeleton(cancelled, kSampleAsf);
        EXPECT_EQ(outcome.message, "User cancelled command");
        // The import returns the same status for every failure of its parser.
        EXPECT_EQ(outcome.status, poll < 7 ? Zelk::status::kFail : Zelk::status::kCancelled);
        EXPECT_TRUE(cancelled.GetSkeleton().models.empty());
        EXPECT_THAT(headless::Session::Current().GetScene().Models(), IsEmpty());
        EXPECT_TRUE(BarIsHidden());
    }
    StartSession(true);
    headless::PressCancelAtPoll(8);
    EXPECT_EQ(ImportSkeleton(importer, kSampleAsf), Outcome());
}

TEST_F(AcclaimBar, IgnoresACancelFlagThatReadsOne) {
    headless::SetPressedValue(1);
    headless::Session::Current().PressCancel();
    EXPECT_EQ(ImportSkeleton(importer, kSampleAsf), Outcome());
}

TEST_F(AcclaimBar, IsNotNeeded) {
    StartSession(false);
    ImportSampleSkeleton(true);
    EXPECT_THAT(BarLines(), IsEmpty());
}

TEST_F(AcclaimBar, RunsToItsEndWithAMotion) {
    for (const bool nulls : {true, false}) {
        StartSession(true);
        ImportSampleSkeleton(nulls);
        const std::size_t before = BarLines().size();
        ImportSampleMotion();
        Lines lines = BarLines();
        lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(before));
        EXPECT_THAT(lines, ElementsAre("minimum 0", "maximum 32000", "step 1", "value 0",
                                       "caption Importing Acclaim Motion...", "visible 1",
                                       "value 3556",   // nodes counted
                                       "value 7111",   // frames read
                                       "value 10667",  // keys attached
                                       "caption Converting rotations order...", "value 14222",
                                       "caption Converting rotations...", "value 17778",
                                       nulls ? "caption Converting length animation..."
                                             : "caption Mapping rotations to bones...",
                                       "value 21333", "caption Creating model motion action...",
                                       "value 24889", "caption Almost done...", "value 28444",
                                       "value 32000", "visible 0"));
    }
}

TEST_F(AcclaimBar, IsPolledForEachNodeAndValue) {
    constexpr std::uint64_t kSkeletonPolls = 7;
    constexpr std::uint64_t kNodes = 6;
    constexpr std::uint64_t kChannels = 14;
    constexpr std::uint64_t kFrames = 3;
    ImportSampleSkeleton(true);
    ImportSampleMotion();
    EXPECT_EQ(headless::CancelPolls(), kSkeletonPolls + kNodes + kFrames * kChannels + 1 +
                                           kChannels + 1 + 3 * kNodes + 2 + kNodes + 1);
}

TEST_F(AcclaimBar, CancelsAMotionAtEachPoll) {
    for (const bool nulls : {true, false}) {
        ImportSampleSkeleton(nulls);
        const std::uint64_t before = headless::CancelPolls();
        ImportSampleMotion();
        const std::uint64_t after = headless::CancelPolls();
        for (std::uint64_t poll = before + 1; poll <= after; ++poll) {
            StartSession(true);
            headless::PressCancelAtPoll(poll);
            CAcclaimImport cancelled;
            cancelled.SetOptions(nulls, true, false, true);
            ASSERT_EQ(ImportSkeleton(cancelled, kSampleAsf), Outcome());
            const Outcome outcome = ImportMotion(cancelled, kSampleAmc);
            EXPECT_EQ(outcome.status, Zelk::status::kCancelled) << poll;
            EXPECT_EQ(outcome.message, "User cancelled command") << poll;
            EXPECT_THAT(SceneProblems(false), IsEmpty());
            EXPECT_EQ(cancelled.GetSkeleton().frameCount, 0u);
        }
        StartSession(true);
    }
}

TEST_F(AcclaimBar, IsHiddenAfterAFailure) {
    EXPECT_LT(ImportSkeleton(importer, ":version 1.10\n:units mass heavy").status, 0);
    EXPECT_TRUE(BarIsHidden());
    ImportSampleSkeleton(true);
    EXPECT_LT(ImportMotion(importer, "1\nroot").status, 0);
    EXPECT_TRUE(BarIsHidden());
}

TEST_F(AcclaimBar, IsNotMadeWithoutAFile) {
    EXPECT_LT(importer.ImportSkeleton(L"/nowhere/a.asf", L"skel").GetCode(), 0);
    EXPECT_THAT(BarLines(), IsEmpty());
}

}  // namespace
