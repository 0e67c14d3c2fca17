// Vectors and matrices for tests. They share nothing with the product, so that what a test computes
// with them checks the product independently.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numbers>
#include <stdexcept>

namespace support {

inline double Radians(double degrees) {
    return degrees * std::numbers::pi / 180.0;
}

using Vec3 = std::array<double, 3>;

inline Vec3 Add(const Vec3& a, const Vec3& b) {
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}
inline Vec3 Subtract(const Vec3& a, const Vec3& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
inline Vec3 Scale(const Vec3& a, double factor) {
    return {a[0] * factor, a[1] * factor, a[2] * factor};
}
inline double Dot(const Vec3& a, const Vec3& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
inline Vec3 Cross(const Vec3& a, const Vec3& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
inline double Length(const Vec3& a) {
    return std::hypot(a[0], a[1], a[2]);
}
inline double Distance(const Vec3& a, const Vec3& b) {
    return Length(Subtract(a, b));
}
// The vector of length 1 that has the same direction.
inline Vec3 Unit(const Vec3& a) {
    const double length = Length(a);
    return {a[0] / length, a[1] / length, a[2] / length};
}

template <std::size_t Size>
struct SquareMatrix {
    double m[Size][Size];

    double (&operator[](std::size_t row))[Size] { return m[row]; }
    const double (&operator[](std::size_t row) const)[Size] { return m[row]; }
    friend bool operator==(const SquareMatrix&, const SquareMatrix&) = default;

    friend SquareMatrix operator*(const SquareMatrix& a, const SquareMatrix& b) {
        SquareMatrix product{};
        for (std::size_t row = 0; row < Size; ++row)
            for (std::size_t column = 0; column < Size; ++column)
                for (std::size_t inner = 0; inner < Size; ++inner)
                    product.m[row][column] += a.m[row][inner] * b.m[inner][column];
        return product;
    }
};

template <std::size_t Size>
SquareMatrix<Size> Transposed(const SquareMatrix<Size>& a) {
    SquareMatrix<Size> out{};
    for (std::size_t row = 0; row < Size; ++row)
        for (std::size_t column = 0; column < Size; ++column)
            out.m[row][column] = a.m[column][row];
    return out;
}

// The largest difference between two entries; infinite where an entry is NaN.
template <std::size_t Size>
double Distance(const double (&a)[Size][Size], const double (&b)[Size][Size]) {
    double largest = 0.0;
    for (std::size_t row = 0; row < Size; ++row)
        for (std::size_t column = 0; column < Size; ++column) {
            const double difference = std::fabs(a[row][column] - b[row][column]);
            if (std::isnan(difference)) return std::numeric_limits<double>::infinity();
            largest = difference > largest ? difference : largest;
        }
    return largest;
}
template <std::size_t Size>
double Distance(const SquareMatrix<Size>& a, const SquareMatrix<Size>& b) {
    return Distance(a.m, b.m);
}

// 3x3 matrices are for column vectors, as in textbooks: p' = M * p.
using Matrix3 = SquareMatrix<3>;
inline constexpr Matrix3 kIdentity3{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};

inline Vec3 operator*(const Matrix3& a, const Vec3& v) {
    Vec3 out{};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column)
            out[row] += a.m[row][column] * v[column];
    return out;
}

// The rotation about the axis 'x', 'y' or 'z'.
inline Matrix3 ColumnRotation(char axis, double radians) {
    const double c = std::cos(radians);
    const double s = std::sin(radians);
    if (axis == 'x') return {{{1, 0, 0}, {0, c, -s}, {0, s, c}}};
    if (axis == 'y') return {{{c, 0, s}, {0, 1, 0}, {-s, 0, c}}};
    if (axis == 'z') return {{{c, -s, 0}, {s, c, 0}, {0, 0, 1}}};
    throw std::invalid_argument("an axis is 'x', 'y' or 'z'");
}

// 4x4 matrices are for row vectors, as in the host: p' = p * M, with the translation in the last
// row.
using Matrix4 = SquareMatrix<4>;
inline constexpr Matrix4 kIdentity4{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};

inline Matrix4 RowRotation(char axis, double radians) {
    const Matrix3 rotation = ColumnRotation(axis, radians);
    Matrix4 out = kIdentity4;
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column)
            out.m[row][column] = rotation.m[column][row];
    return out;
}

// The rotation about x, then about y, then about z.
inline Matrix4 RowRotationOfDegrees(double x, double y, double z) {
    return RowRotation('x', Radians(x)) * RowRotation('y', Radians(y)) *
           RowRotation('z', Radians(z));
}

}  // namespace support
