#include "export/scene_angles.h"

#include <cmath>
#include <gtest/gtest.h>

#include "headless/transform.h"

namespace scene_angles_test {

using exporters::SceneAngles;

headless::Transform Turned(const SceneAngles& angles) {
    return headless::FromLocal({0.0, 0.0, 0.0, angles[0], angles[1], angles[2]});
}

double Difference(const headless::Transform& a, const headless::Transform& b) {
    double worst = 0.0;
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            worst = std::max(worst, std::abs(a.axes[row][column] - b.axes[row][column]));
    return worst;
}

struct Row {
    const char* name;
    SceneAngles angles;    // the rotation
    SceneAngles before;    // the angles in the frame before
    SceneAngles expected;  // the nearest angles
};

class NearestAngles : public testing::TestWithParam<Row> {};

TEST_P(NearestAngles, GiveTheSameRotation) {
    const Row& row = GetParam();
    const headless::Transform rotation = Turned(row.angles);
    const SceneAngles found =
        exporters::AnglesNear(exporters::FastAnglesOf(rotation.axes), row.before);
    EXPECT_LT(Difference(Turned(found), rotation), 1e-12);
    for (std::size_t axis = 0; axis < 3; ++axis)
        EXPECT_NEAR(found[axis], row.expected[axis], 1e-9) << axis;
}

const Row kRows[] = {
    {"None", {0, 0, 0}, {0, 0, 0}, {0, 0, 0}},
    {"Plain", {10, 20, 30}, {9, 19, 29}, {10, 20, 30}},
    {"BeyondHalfATurn", {181, 0, 0}, {179, 0, 0}, {181, 0, 0}},
    {"BackBeyondHalfATurn", {0, 0, -181}, {0, 0, -179}, {0, 0, -181}},
    {"ManyTurns", {0, 0, 5}, {0, 0, 3600}, {0, 0, 3605}},
    {"BeyondAQuarter", {10, 95, 30}, {10, 85, 30}, {10, 95, 30}},
    {"FarBeyondAQuarter", {10, 170, 30}, {11, 171, 31}, {10, 170, 30}},
    {"Locked", {40, 90, 70}, {40, 89, 70}, {40, 90, 70}},
    {"LockedDown", {40, -90, 70}, {40, -89, 70}, {40, -90, 70}},
    {"LockedKeepsX", {40, 90, 70}, {10, 89, 45}, {10, 90, 40}},
    {"LockedAfterTurns", {0, 90, 0}, {0, 90, 720}, {0, 90, 720}},
};
INSTANTIATE_TEST_SUITE_P(, NearestAngles, testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.name; });

// The angles of the scene may have a y beyond a quarter turn, where only those near 90 and 270
// degrees are locked.
TEST(AnglesNear, GivesTheSameRotationForAnyAngles) {
    for (const double x : {0.0, 30.0})
        for (int y = -360; y <= 360; y += 30)
            for (const SceneAngles& before : {SceneAngles{0, 0, 0}, SceneAngles{100, 200, -300}}) {
                const SceneAngles angles = {x, double(y), 70.0};
                const SceneAngles found = exporters::AnglesNear(angles, before);
                EXPECT_LT(Difference(Turned(found), Turned(angles)), 1e-9) << x << " " << y;
            }
}

TEST(FastAnglesOf, GivesTheSameRotationEverywhere) {
    for (int x = -180; x <= 180; x += 15)
        for (int y = -90; y <= 90; y += 15)
            for (int z = -180; z <= 180; z += 15) {
                const headless::Transform rotation =
                    Turned({double(x) + 0.1, double(y), double(z) - 0.1});
                EXPECT_LT(Difference(Turned(exporters::FastAnglesOf(rotation.axes)), rotation),
                          1e-12);
            }
}

}  // namespace scene_angles_test
