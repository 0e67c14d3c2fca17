// Matrices as values, for comparing.
#pragma once

#include <array>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>

namespace math_test {

struct Matrix {
    double m[4][4];
};

inline Matrix Of(const std::array<std::array<double, 4>, 4>& rows) {
    Matrix matrix;
    std::memcpy(matrix.m, rows.data(), sizeof(matrix.m));
    return matrix;
}

inline double Distance(const Matrix& a, const Matrix& b) {
    double largest = 0.0;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column) {
            const double off = std::fabs(a.m[row][column] - b.m[row][column]);
            if (!(off <= largest)) largest = off;
        }
    return largest;
}

inline bool Same(const Matrix& a, const Matrix& b) {
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            if (a.m[row][column] != b.m[row][column]) return false;
    return true;
}

inline Matrix Transposed(const Matrix& a) {
    Matrix out;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            out.m[row][column] = a.m[column][row];
    return out;
}

}  // namespace math_test
