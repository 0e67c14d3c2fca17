#include "math/figure_shape.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

math::Extent Box(double x, double y, double z) {
    const double low[3] = {-x / 2, 10.0, 3.0};
    const double high[3] = {x / 2, 10.0 + y, 3.0 + z};
    math::Extent extent;
    extent.Include(low);
    extent.Include(high);
    return extent;
}

struct UnitRow {
    double height;
    const char* unit;
};

const UnitRow kUnits[] = {
    {1.7, "metres"},
    {170, "centimetres"},
    {1700, "millimetres"},
    {67, "inches"},
    {30, "archive units"},
    {39, "inches"},
    {5, ""},
    {0.5, ""},
    {300, ""},
    {99, ""},
};

std::string_view NameOfUnit(double height) {
    const math::LengthUnit* const unit = math::LikelyUnit(height);
    return unit ? unit->name : std::string_view();
}

TEST(LikelyUnit, IsTheOneInWhichAPersonHasThisHeight) {
    for (const UnitRow& row : kUnits)
        EXPECT_EQ(NameOfUnit(row.height), row.unit) << row.height;
}

TEST(FigureShape, FindsTheAxisThatMostFramesAreLongestAlong) {
    math::FigureShape shape;
    shape.SetRest(Box(170, 160, 20));
    EXPECT_EQ(shape.UpAxis(), 0U);
    shape.AddFrame(Box(60, 160, 30));
    shape.AddFrame(Box(60, 50, 170));
    shape.AddFrame(Box(60, 165, 30));
    EXPECT_EQ(shape.UpAxis(), 1U);
    EXPECT_EQ(shape.Height(), 160.0);
}

TEST(FigureShape, MeasuresTheFirstFrameWhereTheRestPoseIsFlat) {
    math::FigureShape shape;
    shape.SetRest(Box(170, 0, 20));
    shape.AddFrame(Box(60, 165, 30));
    EXPECT_EQ(shape.Height(), 165.0);
    EXPECT_FALSE(math::FigureShape().Height());
}

TEST(FigureShape, LeavesOutWhatIsNotFinite) {
    math::Extent extent = Box(1, 2, 3);
    const double bad[3] = {0.0, INFINITY, 0.0};
    extent.Include(bad);
    EXPECT_EQ(extent.Along(1), 2.0);
}

TEST(LikelyUnit, StatesItsLength) {
    EXPECT_EQ(math::LikelyUnit(170.0)->metres, 0.01);
    EXPECT_EQ(math::LikelyUnit(30.0)->metres, 0.056444);
}

}  // namespace
