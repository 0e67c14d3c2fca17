#include "export/figure_facts.h"

#include <gtest/gtest.h>

#include "tests/export/exported.h"

namespace figure_facts_test {

// A figure of 170 units, and the options that change its numbers.
struct Row {
    const char* name;
    exporters::Options options;
    double metresPerUnit;
    char up;
};

const Row kRows[] = {
    {"AsItIs", {}, 0.01, 'y'},
    {"InMetres", {.scale = 0.01}, 1.0, 'y'},
    {"HalfAsLarge", {.scale = 0.5}, 0.02, 'y'},
    {"TwiceAsLarge", {.scale = 2.0}, 0.005, 'y'},
    {"Enlarged", {.enlarged = 100.0}, 1.0, 'y'},
    {"OneFrame", {.frames = exporters::FrameRange{2, 2}}, 0.01, 'y'},
    {"TurnedFromX", {.up = exporters::UpAxis::X}, 0.01, 'y'},
    {"OfAStatedUnit", {.scale = 0.5, .metresPerUnit = 0.3}, 0.6, 'y'},
    {"OfAStatedUpAxis", {.knownUp = exporters::UpAxis::Z}, 0.01, 'z'},
    {"TurnedFromAStatedUpAxis",
     {.up = exporters::UpAxis::Z, .knownUp = exporters::UpAxis::Z},
     0.01,
     'y'},
};

class FigureFacts : public testing::TestWithParam<Row> {};

TEST_P(FigureFacts, DescribeTheNumbersThatAreWritten) {
    ASSERT_TRUE(exported::ImportText(
        "HIERARCHY\nROOT Hips\n{\nOFFSET 0 0 0\nCHANNELS 6 Xposition Yposition Zposition Zrotation "
        "Xrotation Yrotation\nEnd Site\n{\nOFFSET 0 170 0\n}\n}\nMOTION\nFrames: 3\nFrame Time: "
        "0.1\n0 0 0 0 0 0\n0 0 0 90 0 0\n0 0 0 0 0 0\n"));
    const headless::Object& model = *exported::CurrentScene().Models().front();
    exporters::Notes notes;
    const exporters::ExportedMotion motion(exported::CurrentScene(), {&model, 0},
                                           exported::MotionOf(model), GetParam().options, true,
                                           notes);
    const exporters::FigureFacts facts = exporters::DescribeFigure(motion, GetParam().options);
    EXPECT_DOUBLE_EQ(facts.metresPerUnit, GetParam().metresPerUnit);
    EXPECT_EQ(facts.up, GetParam().up);
}

INSTANTIATE_TEST_SUITE_P(, FigureFacts, testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.name; });

}  // namespace figure_facts_test
