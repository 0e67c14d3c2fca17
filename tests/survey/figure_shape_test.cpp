#include "survey/figure_shape.h"

#include <cmath>
#include <gtest/gtest.h>

#include "survey/codes.h"

namespace {

survey::Extent Box(double x, double y, double z) {
    const double low[3] = {-x / 2, 10.0, 3.0};
    const double high[3] = {x / 2, 10.0 + y, 3.0 + z};
    survey::Extent extent;
    extent.Include(low);
    extent.Include(high);
    return extent;
}

struct SizeRow {
    const char* name;
    double height;
    const char* message;  // null if there must be no finding
};

const SizeRow kSizes[] = {
    {"Metres", 1.7, nullptr},
    {"Smallest", 0.3, nullptr},
    {"Tallest", 5.0, nullptr},
    {"Centimetres", 170.0,
     "the figure is 170 tall, likely of centimetres; exports count metres: --scale 0.01 makes it "
     "1.7 "
     "metres tall"},
    {"Unknown", 12345.6,
     "the figure is 12350 tall; exports count metres: --scale 0.0001377 makes it 1.7 metres tall"},
    {"Enormous", 1e308,
     "the figure is 1e+308 tall; exports count metres: --scale 1.6999999999999997e-308 makes it "
     "1.7 metres tall"},
    {"Tiny", 0.02,
     "the figure is 0.02 tall; exports count metres: --scale 85 makes it 1.7 metres tall"},
};

class FigureSize : public testing::TestWithParam<SizeRow> {};

TEST_P(FigureSize, IsReportedIfAnExportIsFarFromAPersonsSize) {
    const survey::SourceText source("x");
    survey::FindingList list(source);
    survey::FigureShape shape;
    shape.SetRest(Box(0.0, GetParam().height, 0.0));
    survey::Facts facts;
    survey::ReportShape(shape, facts, list);
    EXPECT_NEAR(facts.height.value_or(0.0), GetParam().height, 1e-9);
    EXPECT_EQ(facts.up, "y");
    const auto findings = list.Sorted();
    ASSERT_EQ(findings.size(), GetParam().message ? 1U : 0U);
    if (findings.empty()) return;
    EXPECT_EQ(findings[0].code, survey::codes::kFigureSize);
    EXPECT_EQ(findings[0].severity, survey::Severity::Note);
    EXPECT_EQ(findings[0].message, GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(, FigureSize, testing::ValuesIn(kSizes),
                         [](const auto& row) { return row.param.name; });

}  // namespace
