// The frame that a finding is about.
#include <gmock/gmock.h>
#include <map>

#include "survey/codes.h"
#include "tests/survey/acclaim_case.h"

namespace finding_frames_test {

using survey::Finding;
using testing::Pair;
using testing::UnorderedElementsAre;
namespace codes = survey::codes;

using Frames = std::map<std::string_view, std::optional<std::int64_t>>;

Frames FramesOf(const std::vector<Finding>& findings) {
    Frames frames;
    for (const Finding& finding : findings)
        frames[finding.code] = finding.frame;
    return frames;
}

Frames SurveyBvh(const std::string& rows, const std::string& announced = "4") {
    const std::string text =
        "HIERARCHY\nROOT Hips\n{\nOFFSET 0 0 0\nCHANNELS 3 Zrotation Xrotation Yrotation\nEnd "
        "Site\n{\nOFFSET 0 1 0\n}\n}\nMOTION\nFrames: " +
        announced + "\nFrame Time: 0.1\n" + rows;
    survey::Options options;
    options.purpose = survey::Purpose::Import;
    return FramesOf(survey::SurveyBvh(text, options).findings);
}

TEST(FindingFrames, OfABvhAreCountedFromOne) {
    EXPECT_THAT(SurveyBvh("1 2 3\n1 2 3\n1 nan 3\n1 2 3\n"),
                UnorderedElementsAre(Pair(codes::kNumberNotFinite, 3)));
    EXPECT_THAT(SurveyBvh("nan 2 3\n1 2 3\n\n1 2 3\n1 2 3\n"),
                UnorderedElementsAre(Pair(codes::kNumberNotFinite, 1)));
    // Blank lines are no frames.
    EXPECT_THAT(SurveyBvh("1 2 3\n\n\n1 2 3\n1 2 3\n1 2 inf\n"),
                UnorderedElementsAre(Pair(codes::kNumberNotFinite, 4)));
}

TEST(FindingFrames, AreMissingOutsideTheRows) {
    const Frames frames = SurveyBvh("1 2 3\n1 nan 3\n", "7");
    EXPECT_EQ(frames.at(codes::kNumberNotFinite), 2);
    EXPECT_EQ(frames.at(codes::kFramesFewer), std::nullopt);
    // A row that is left out is no frame.
    EXPECT_EQ(SurveyBvh("1 2 3\n1 2 3\n1 2\n", "3").at(codes::kRowCut), std::nullopt);
}

TEST(FindingFrames, OfAnAmcAreItsOwnNumbers) {
    using acclaim_case::CleanAmc;
    using acclaim_case::With;
    const auto frames = [](const std::string& amc) {
        return FramesOf(acclaim_case::Survey(acclaim_case::CleanAsf(), amc,
                                             acclaim_case::For(survey::Purpose::Import))
                            .motions[0]
                            .findings);
    };
    EXPECT_THAT(frames(With(CleanAmc(), "spine 3 15 -20", "spine 3 x -20")),
                UnorderedElementsAre(Pair(codes::kNumberNotFinite, 3)));
    EXPECT_THAT(frames(With(With(CleanAmc(), "\n3\nroot", "\n 3 \r\nroot"), "spine 3 15 -20",
                            "spine 3 x -20"))
                    .at(codes::kNumberNotFinite),
                3);
}

}  // namespace finding_frames_test
