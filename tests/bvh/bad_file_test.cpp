#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "tests/bvh/bad_files.h"
#include "tests/bvh/importer.h"
#include "tests/bvh/samples.h"
#include "tests/support/core/scene_check.h"
#include "tests/support/parsed_bvh.h"

namespace {

using bvh_test::BadFile;
using bvh_test::Importer;
using bvh_test::kAllOptions;
using bvh_test::kBadFiles;
using support::StatusText;
using testing::IsEmpty;

constexpr const char* kParseFailure = "0x80004005";

class BvhBadFile : public testing::TestWithParam<BadFile> {};

TEST_P(BvhBadFile, IsRefusedByTheParserWithItsMessageAndStatus) {
    support::ParsedBvh parsed;
    EXPECT_EQ(StatusText(parsed.Parse(GetParam().text)),
              StatusText(static_cast<std::int32_t>(GetParam().status)));
    EXPECT_EQ(parsed.Message(), GetParam().message);
    EXPECT_EQ(parsed.parser.LastError().line, GetParam().line);
    EXPECT_EQ(parsed.parser.LastError().column, GetParam().column);
}

TEST_P(BvhBadFile, LeavesNoNodesAndNoObjects) {
    for (const auto& options : kAllOptions) {
        for (const bool interactive : {true, false}) {
            support::StartSession(interactive);
            Importer importer(options);
            EXPECT_EQ(StatusText(importer.Import(GetParam().text)), kParseFailure);
            EXPECT_EQ(importer.Message(), GetParam().message);
            EXPECT_EQ(importer.Line(), GetParam().line);
            EXPECT_EQ(importer.Column(), GetParam().column);
            EXPECT_TRUE(importer.WasParsing());
            EXPECT_EQ(importer.GetModelsCount(), 0u);
            EXPECT_FALSE(importer.GetLastModel().IsValid());
            EXPECT_FALSE(importer.GetLastBasePose().IsValid());
            EXPECT_FALSE(importer.GetLastMotion().IsValid());
            EXPECT_THAT(importer.Nodes(), IsEmpty());
            EXPECT_THAT(bvh_test::Scene().Objects(), IsEmpty());
            EXPECT_THAT(support::SceneProblems(false), IsEmpty());
        }
    }
}

TEST_P(BvhBadFile, AfterAGoodSectionLeavesThatSectionInTheScene) {
    const auto linesBefore = static_cast<std::uint32_t>(
        std::count(bvh_test::kChain.begin(), bvh_test::kChain.end(), '\n'));
    for (const bool nulls : {true, false}) {
        support::StartSession(true);
        Importer importer({nulls});
        EXPECT_EQ(StatusText(importer.Import(bvh_test::kChain + GetParam().text)), kParseFailure);
        EXPECT_EQ(importer.Message(), GetParam().message);
        EXPECT_EQ(importer.Line(), linesBefore + GetParam().line);
        EXPECT_EQ(importer.Column(), GetParam().column);
        EXPECT_TRUE(importer.WasParsing());
        EXPECT_EQ(importer.GetModelsCount(), 1u);
        EXPECT_EQ(support::Utf8(importer.GetLastModel().GetFullName()), "walk");
        EXPECT_EQ(support::Utf8(importer.GetLastBasePose().GetFullName()), "walk.walk_BasePose");
        EXPECT_EQ(support::Utf8(importer.GetLastMotion().GetFullName()), "walk.walk_Motion");
        EXPECT_EQ(bvh_test::Scene().Models().size(), 1u);
        EXPECT_THAT(support::SceneProblems(true), IsEmpty());
    }
}

INSTANTIATE_TEST_SUITE_P(, BvhBadFile, testing::ValuesIn(kBadFiles),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
