#include <algorithm>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <ostream>
#include <random>

#include "math/angles.h"
#include "math/rotation_math.h"
#include "tests/support/math.h"

namespace rotation_matrix_test {

using support::kIdentity4;
using support::Matrix4;

// Full of NaN, so that a test notices an entry that is not written.
Matrix4 Dirty() {
    Matrix4 matrix;
    std::fill_n(&matrix.m[0][0], 16, std::numeric_limits<double>::quiet_NaN());
    return matrix;
}

template <class Function, class... Angles>
Matrix4 Made(Function function, Angles... angles) {
    Matrix4 matrix = Dirty();
    function(matrix.m, angles...);
    return matrix;
}

Matrix4 Product(const Matrix4& a, const Matrix4& b) {
    Matrix4 out = Dirty();
    MatrixMult(a.m, b.m, out.m);
    return out;
}

TEST(AngleConstants, AreTheStatedDoubles) {
    EXPECT_EQ(math::kPi, 3.141592653589793);
    EXPECT_EQ(math::kRadiansPerDegree, 0.017453292519943295);
    EXPECT_EQ(math::kDegreesPerRadian, 57.29577951308232);
}

TEST(Identity, HasOnesOnItsDiagonalAlone) {
    EXPECT_TRUE(Made(MatrixIdentity) == kIdentity4);
}

TEST(AxisRotation, HoldsTheAnglesCosineAndSine) {
    for (const double angle : {0.0, 0.3, -1.2, math::kPi / 2, math::kPi, -math::kPi, 4.0, 100.0}) {
        const double c = std::cos(angle);
        const double s = std::sin(angle);
        EXPECT_TRUE((Made(MatrixRotationX, angle) ==
                     Matrix4{{{1, 0, 0, 0}, {0, c, s, 0}, {0, -s, c, 0}, {0, 0, 0, 1}}}));
        EXPECT_TRUE((Made(MatrixRotationY, angle) ==
                     Matrix4{{{c, 0, -s, 0}, {0, 1, 0, 0}, {s, 0, c, 0}, {0, 0, 0, 1}}}));
        EXPECT_TRUE((Made(MatrixRotationZ, angle) ==
                     Matrix4{{{c, s, 0, 0}, {-s, c, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}}));
    }
}

// With row vectors, row i is the image of axis i.
TEST(AxisRotation, TurnsTheNextAxisTowardsTheOneAfter) {
    EXPECT_NEAR(Made(MatrixRotationX, math::kPi / 2).m[1][2], 1.0, 1e-15);
    EXPECT_NEAR(Made(MatrixRotationY, math::kPi / 2).m[2][0], 1.0, 1e-15);
    EXPECT_NEAR(Made(MatrixRotationZ, math::kPi / 2).m[0][1], 1.0, 1e-15);
}

TEST(Product, IsThatOfFullMatrices) {
    const Matrix4 a{{{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}, {13, 14, 15, 16}}};
    const Matrix4 b{{{2, 0, 1, 0}, {0, 3, 0, 1}, {1, 0, 0, 2}, {0, 1, 4, 0}}};
    EXPECT_TRUE((Product(a, b) ==
                 Matrix4{{{5, 10, 17, 8}, {17, 26, 37, 20}, {29, 42, 57, 32}, {41, 58, 77, 44}}}));
    EXPECT_TRUE(Product(a, kIdentity4) == a);
    EXPECT_TRUE(Product(kIdentity4, a) == a);
}

// Each sum begins with zero, and its terms are added one after the other in rising order.
TEST(Product, AddsItsTermsInOrder) {
    const Matrix4 a{{{1e16, 1, -1e16, 1}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}}};
    const Matrix4 ones{{{1, 1, 1, 1}, {1, 1, 1, 1}, {1, 1, 1, 1}, {1, 1, 1, 1}}};
    EXPECT_EQ(Product(a, ones).m[0][0], ((0.0 + 1e16 + 1.0) - 1e16) + 1.0);
}

TEST(Product, ClearsItsResultBeforeItReads) {
    Matrix4 a{{{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 1, 2, 3}, {4, 5, 6, 7}}};
    MatrixMult(a.m, kIdentity4.m, a.m);
    EXPECT_TRUE((a == Matrix4{{{0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}}}));
}

struct Angles {
    double x, y, z;
};

const Angles kAngles[] = {{0, 0, 0},         {0.1, 0.2, 0.3},       {-1.0, 2.0, -3.0},
                          {math::kPi, 0, 0}, {0, math::kPi / 2, 0}, {1, -math::kPi / 2, 0.5},
                          {7, 8, 9},         {-0.0, -0.0, -0.0}};

TEST(Composite, TurnsInTheOrderOfItsName) {
    for (const auto& [x, y, z] : kAngles) {
        const Matrix4 rx = Made(MatrixRotationX, x);
        const Matrix4 ry = Made(MatrixRotationY, y);
        const Matrix4 rz = Made(MatrixRotationZ, z);
        EXPECT_TRUE(Made(MatrixRotationXYZ, x, y, z) == Product(Product(rx, ry), rz));
        EXPECT_TRUE(Made(MatrixRotationZYX, x, y, z) == Product(Product(rz, ry), rx));
    }
}

TEST(Composite, OfNegatedAnglesBackwardsIsTheInverse) {
    for (const auto& [x, y, z] : kAngles) {
        const Matrix4 there = Made(MatrixRotationXYZ, x, y, z);
        const Matrix4 back = Made(MatrixRotationZYX, -x, -y, -z);
        // Both have the same products; only the order of their sums differs.
        EXPECT_LE(Distance(back, Transposed(there)), 1e-15);
        EXPECT_LE(Distance(Product(there, back), kIdentity4), 1e-15);
    }
}

TEST(Composite, MovesNothing) {
    const Matrix4 m = Made(MatrixRotationXYZ, 0.4, -0.7, 2.2);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(m.m[3][i], 0.0);
        EXPECT_EQ(m.m[i][3], 0.0);
    }
    EXPECT_EQ(m.m[3][3], 1.0);
}

}  // namespace rotation_matrix_test
