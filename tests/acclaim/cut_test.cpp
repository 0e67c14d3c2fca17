// Files that are cut after each of their bytes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "tests/support/acclaim/acclaim_texts.h"
#include "tests/support/core/scene_check.h"
#include "tests/support/core/session_text.h"

namespace {

using namespace support;
using testing::IsEmpty;

class CutFiles : public testing::TestWithParam<bool> {};

TEST_P(CutFiles, LeaveASoundSceneWhereverTheyAreCut) {
    const std::string asf(kSampleAsf);
    const std::string amc(kSampleAmc);
    for (std::size_t size = 0; size <= asf.size(); ++size) {
        StartSession(true);
        CAcclaimImport importer;
        importer.SetOptions(GetParam(), true, false, true);
        const Outcome skeleton = ImportSkeleton(importer, asf.substr(0, size));
        if (skeleton.status == 0) ImportMotion(importer, amc);
        EXPECT_NE(skeleton.status < 0, skeleton.message.empty()) << size;
        // If the skeleton has lost channels, the parser takes values of the motion for frame
        // numbers.
        EXPECT_THAT(SceneProblems(false), testing::Each(testing::EndsWith(" do not rise"))) << size;
    }
    StartSession(true);
    CAcclaimImport importer;
    importer.SetOptions(GetParam(), true, false, true);
    ASSERT_EQ(ImportSkeleton(importer, asf), Outcome());
    for (std::size_t size = 0; size <= amc.size(); ++size) {
        const Outcome motion = ImportMotion(importer, amc.substr(0, size));
        EXPECT_NE(motion.status < 0, motion.message.empty()) << size;
        EXPECT_EQ(importer.GetSkeleton().frameCount, 0u);
    }
    EXPECT_THAT(SceneProblems(true), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(, CutFiles, testing::Bool(),
                         [](const auto& row) { return row.param ? "Nulls" : "Bones"; });

}  // namespace
