// Files that the parsers refuse: the message, its line and column, the status, and what is left in
// the scene.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/status.h"
#include "tests/acclaim/bad_files.h"
#include "tests/support/acclaim/acclaim_texts.h"
#include "tests/support/acclaim/parsed_acclaim.h"
#include "tests/support/core/scene_check.h"
#include "tests/support/core/session_text.h"

namespace {

using namespace support;
using Zelk::status::kFail;

std::string RowName(const testing::TestParamInfo<BadFile>& row) {
    return row.param.name;
}

class BadSkeleton : public testing::TestWithParam<BadFile> {
  protected:
    const std::string text = ":version 1.10\n" + GetParam().text;
    CAcclaimImport importer;
};

TEST_P(BadSkeleton, IsReportedByTheParser) {
    ParsedAcclaim parsed;
    EXPECT_EQ(parsed.Parse(text),
              (Outcome{GetParam().status, GetParam().message, GetParam().line}));
    EXPECT_EQ(parsed.parser.LastError().column, GetParam().column);
}

// The import returns the same status for every failure of its parser.
TEST_P(BadSkeleton, FailsTheImport) {
    StartSession(true);
    EXPECT_EQ(ImportSkeleton(importer, text),
              (Outcome{kFail, GetParam().message, GetParam().line}));
    EXPECT_EQ(ColumnOf(importer), GetParam().column);
    EXPECT_TRUE(importer.GetSkeleton().models.empty());
    EXPECT_FALSE(importer.GetLastModel().IsValid());
    EXPECT_THAT(SceneProblems(false), testing::IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(, BadSkeleton, testing::ValuesIn(BadSkeletons()), RowName);

class BadMotion : public testing::TestWithParam<BadFile> {};

TEST_P(BadMotion, LeavesTheSkeleton) {
    StartSession(true);
    CAcclaimImport importer;
    importer.SetOptions(true, true, false, true);
    ASSERT_EQ(ImportSkeleton(importer, kSampleAsf), Outcome());
    EXPECT_EQ(ImportMotion(importer, GetParam().text),
              (Outcome{GetParam().status, GetParam().message, GetParam().line}));
    EXPECT_EQ(ColumnOf(importer), GetParam().column);
    EXPECT_EQ(ModelNamed("skel").modelData->actions.size(), 1u);
    EXPECT_THAT(SceneProblems(true), testing::IsEmpty());
    EXPECT_EQ(ImportMotion(importer, kSampleAmc), Outcome());
    EXPECT_EQ(MotionCurves().size(), 18u);
}

INSTANTIATE_TEST_SUITE_P(, BadMotion, testing::ValuesIn(BadMotions()), RowName);

}  // namespace
