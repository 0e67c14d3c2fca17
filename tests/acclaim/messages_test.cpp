// Every message of the importer, and the lines and statuses that it comes with.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>
#include <set>

#include "headless/testing.h"
#include "host/status.h"
#include "tests/acclaim/bad_files.h"
#include "tests/support/acclaim/acclaim_texts.h"
#include "tests/support/acclaim/parsed_acclaim.h"
#include "tests/support/bvh_walk.h"
#include "tests/support/core/scene_check.h"
#include "tests/support/core/session_text.h"
#include "tests/support/files.h"

namespace {

using namespace support;
using namespace Zelk::status;

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
}

// The import has one status for whatever its parser found.
TEST_P(BadSkeleton, FailsTheImport) {
    StartSession(true);
    EXPECT_EQ(ImportSkeleton(importer, text),
              (Outcome{kFail, GetParam().message, GetParam().line}));
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
    EXPECT_EQ(ModelNamed("skel").modelData->actions.size(), 1u);
    EXPECT_THAT(SceneProblems(true), testing::IsEmpty());
    EXPECT_EQ(ImportMotion(importer, kSampleAmc), Outcome());
    EXPECT_EQ(MotionCurves().size(), 18u);
}

INSTANTIATE_TEST_SUITE_P(, BadMotion, testing::ValuesIn(BadMotions()), RowName);

// --- What no parser reports ---

struct RefusedFile {
    const char* name;
    const char* text;
    const char* message;
    std::int32_t status;
};
const RefusedFile kRefusedSkeletons[] = {
    {"Empty", "", "Failed to read ASF file. Specify a valid file name", kFileNotFound},
    {"CommentsOnly", "# one\n# two\n", "ASF file is invalid. Specify a valid ASF file",
     kIncompatibleFile},
    {"NameFirst", "# one\n:name a\n:version 1.1", "ASF file is invalid. Specify a valid ASF file",
     kIncompatibleFile},
    {"VersionMissing", ":version", "Bad ASF file version. Specify a valid ASF file",
     kInvalidArgument},
    {"VersionWord", ":version new", "Bad ASF file version. Specify a valid ASF file",
     kInvalidArgument},
    {"VersionTooLow", ":version 0.9", "Unsupported ASF file version. Specify a valid ASF file",
     kInvalidArgument},
    {"VersionZero", ":version 0", "Unsupported ASF file version. Specify a valid ASF file",
     kInvalidArgument},
};

class RefusedSkeleton : public testing::TestWithParam<RefusedFile> {};

// The file is gone when the message is recorded, so the line is the first.
TEST_P(RefusedSkeleton, IsNotParsed) {
    StartSession(true);
    CAcclaimImport importer;
    const bool isRead = GetParam().status != kFileNotFound;
    EXPECT_EQ(ImportSkeleton(importer, GetParam().text),
              (Outcome{GetParam().status, GetParam().message, isRead ? 1u : 0u}));
    EXPECT_TRUE(BarLines().empty());
}

INSTANTIATE_TEST_SUITE_P(, RefusedSkeleton, testing::ValuesIn(kRefusedSkeletons),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(AcclaimArguments, MustNameASkeletonFileAndAModel) {
    StartSession(true);
    CAcclaimImport importer;
    EXPECT_EQ(Report(importer, importer.ImportSkeleton({}, L"skel").GetCode()),
              (Outcome{kInvalidArgument, "ASF file not specified. Specify a valid file name", 0}));
    EXPECT_EQ(Report(importer, importer.ImportSkeleton(L"a.asf", {}).GetCode()),
              (Outcome{kInvalidArgument,
                       "Container model name not specified. Specify a valid model name", 0}));
    EXPECT_EQ(Report(importer, importer.ImportSkeleton(L"/nowhere/a.asf", L"skel").GetCode()),
              (Outcome{kFileNotFound, "Failed to read ASF file. Specify a valid file name", 0}));
}

TEST(AcclaimArguments, MustNameAMotionFileAndAMotion) {
    StartSession(true);
    CAcclaimImport importer;
    EXPECT_EQ(Report(importer, importer.ImportMotion(L"/nowhere/a.amc", L"motion").GetCode()),
              (Outcome{kInvalidArgument, "Skeleton not defined yet", 0}));
    ASSERT_EQ(ImportSkeleton(importer, kSampleAsf), Outcome());
    EXPECT_EQ(Report(importer, importer.ImportMotion({}, L"motion").GetCode()),
              (Outcome{kInvalidArgument, "AMC file not specified. Specify a valid file name", 0}));
    EXPECT_EQ(
        Report(importer, importer.ImportMotion(L"a.amc", {}).GetCode()),
        (Outcome{kInvalidArgument, "Motion name not specified. Specify a valid motion name", 0}));
    EXPECT_EQ(Report(importer, importer.ImportMotion(L"/nowhere/a.amc", L"motion").GetCode()),
              (Outcome{kFileNotFound, "Failed to read AMC file. Specify a valid file name", 0}));
}

TEST(AcclaimArguments, FailWithoutTheModelInTheScene) {
    StartSession(true);
    headless::FailOperation("AddModel", 1);
    CAcclaimImport importer;
    EXPECT_EQ(ImportSkeleton(importer, kSampleAsf),
              (Outcome{kFail, "Failed to create main model", 0}));
}

// --- The sources against the rows ---

// Messages that no row above reaches, and why.
const std::set<std::string> kReachedElsewhere = {
    "Out of memory",                       // without memory: other tests
    "Failed to convert length animation",  // by a skeleton of its own: other tests
    // By nothing: a frame reads records while there are fewer than animated nodes, and an unknown
    // bone counts in both, so that the nodes left are never fewer than the records read.
    "Unrecoverable errors while parsing motion file",
};
// Of the sources' wide texts, those that are no messages.
const std::set<std::string> kOtherTexts = {
    "Importing Acclaim Skeleton...",
    "Importing Acclaim Motion...",
    "Creating Zelk model...",
    "Converting rotations...",
    "Converting length animation...",
    "_BasePose",
    "Creating model motion action...",
    "Almost done...",
    R"(\t\r\n (),)",
    "Invalid keyword found (",
    "Unknown bone (",
    ") at line ",
    ", ignoring...",
    ") referenced in AMC file at line ",
    "More unknown bones or invalid keywords found in AMC file (",
    "), ignoring...",
};

// What stands between L" and the quote behind it.
std::vector<std::string> WideTexts(const std::string& source) {
    std::vector<std::string> texts;
    for (std::size_t at = source.find("L\""); at != std::string::npos;
         at = source.find("L\"", at)) {
        const std::size_t end = source.find('"', at + 2);
        texts.push_back(source.substr(at + 2, end - at - 2));
        at = end + 1;
    }
    return texts;
}

TEST(AcclaimMessages, AreAllReached) {
    std::set<std::string> reached = kReachedElsewhere;
    for (const BadFile& row : BadSkeletons())
        reached.insert(row.message);
    for (const BadFile& row : BadMotions())
        reached.insert(row.message);
    for (const RefusedFile& row : kRefusedSkeletons)
        reached.insert(row.message);
    for (const char* message :
         {"ASF file not specified. Specify a valid file name",
          "Container model name not specified. Specify a valid model name",
          "Skeleton not defined yet", "AMC file not specified. Specify a valid file name",
          "Motion name not specified. Specify a valid motion name",
          "Failed to read AMC file. Specify a valid file name", "Failed to create main model"})
        reached.insert(message);

    std::size_t found = 0;
    for (const char* source : {"acclaim_import", "amc_import", "amc_parser", "asf_bonedata",
                               "asf_fixups", "asf_hierarchy", "asf_import", "asf_parser",
                               "asf_values", "amc_key_lists", "node_names", "wide_text"}) {
        const std::string text = ReadText(std::string(ZKMOCAP_ACCLAIM_DIR) + "/" + source + ".cpp");
        for (const std::string& message : WideTexts(text)) {
            if (kOtherTexts.count(message) > 0) continue;
            ++found;
            EXPECT_TRUE(reached.count(message) > 0) << "no row gives \"" << message << '"';
        }
    }
    EXPECT_GT(found, 50u);
}

}  // namespace
