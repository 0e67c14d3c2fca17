#include "math/rotation_math.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "math/angles.h"

namespace {

// If the magnitude of an angle's cosine is at most this, acos is more accurate than asin.
constexpr double kArcCosineLimit = 0.70710679;
// If the magnitude of the pitch angle's cosine is at most this, the rotation is at gimbal lock.
constexpr double kGimbalLockCosine = 1e-5;

void Assign(double m[4][4], const double rows[3][3]) {
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column)
            m[row][column] = rows[row][column];
        m[row][3] = 0.0;
        m[3][row] = 0.0;
    }
    m[3][3] = 1.0;
}

}  // namespace

void MatrixIdentity(double m[4][4]) {
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            m[row][column] = row == column ? 1.0 : 0.0;
}

void MatrixRotationX(double m[4][4], double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    const double rows[3][3] = {{1, 0, 0}, {0, c, s}, {0, -s, c}};
    Assign(m, rows);
}

void MatrixRotationY(double m[4][4], double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    const double rows[3][3] = {{c, 0, -s}, {0, 1, 0}, {s, 0, c}};
    Assign(m, rows);
}

void MatrixRotationZ(double m[4][4], double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    const double rows[3][3] = {{c, s, 0}, {-s, c, 0}, {0, 0, 1}};
    Assign(m, rows);
}

void MatrixMult(const double a[4][4], const double b[4][4], double out[4][4]) {
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            out[row][column] = 0.0;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            for (int k = 0; k < 4; ++k)
                out[row][column] += a[row][k] * b[k][column];
}

void MatrixRotationXYZ(double m[4][4], double rx, double ry, double rz) {
    double x[4][4], y[4][4], z[4][4], xy[4][4];
    MatrixRotationX(x, rx);
    MatrixRotationY(y, ry);
    MatrixRotationZ(z, rz);
    MatrixMult(x, y, xy);
    MatrixMult(xy, z, m);
}

void MatrixRotationZYX(double m[4][4], double rx, double ry, double rz) {
    double x[4][4], y[4][4], z[4][4], zy[4][4];
    MatrixRotationX(x, rx);
    MatrixRotationY(y, ry);
    MatrixRotationZ(z, rz);
    MatrixMult(z, y, zy);
    MatrixMult(zy, x, m);
}

double arcSinCos(double sinValue, double cosValue) {
    const bool outside = cosValue < -1.0 || cosValue > 1.0;
    const double c = cosValue < -1.0 ? -1.0 : cosValue > 1.0 ? 1.0 : cosValue;
    const double a = std::asin(sinValue < -1.0 ? -1.0 : sinValue > 1.0 ? 1.0 : sinValue);
    if (!outside && std::fabs(c) <= kArcCosineLimit) return a < 0.0 ? -std::acos(c) : std::acos(c);
    if (c >= 0.0) return a;
    return a > 0.0 ? math::kPi - a : -math::kPi - a;
}

void MatrixGetEulerAngles(const double m[4][4], double& rx, double& ry, double& rz) {
    const double a = std::asin(std::clamp(-m[0][2], -1.0, 1.0));
    const double pitch = a > 0.0 ? math::kPi - a : -math::kPi - a;
    const double c = std::cos(pitch);
    if (std::fabs(c) > kGimbalLockCosine) {
        rx = arcSinCos(m[1][2] / c, m[2][2] / c);
        rz = arcSinCos(m[0][1] / c, m[0][0] / c);
    } else if (pitch > 0.0) {
        const double t = arcSinCos(m[1][0], m[1][1]);
        rx = 0.5 * t;
        rz = -0.5 * t;
    } else {
        const double t = arcSinCos(-m[1][0], m[1][1]);
        rx = 0.5 * t;
        rz = 0.5 * t;
    }
    ry = pitch;
}

void RotationToXYZ(const double angles[3], const char* order, double& rx, double& ry, double& rz) {
    double turn[4][4], all[4][4], product[4][4];
    MatrixIdentity(turn);
    MatrixIdentity(all);
    for (int i = 0; i < 3; ++i) {
        switch (order[i]) {
            case 'X':
            case 'x':
                MatrixRotationX(turn, angles[i]);
                break;
            case 'Y':
            case 'y':
                MatrixRotationY(turn, angles[i]);
                break;
            case 'Z':
            case 'z':
                MatrixRotationZ(turn, angles[i]);
                break;
            default:
                break;
        }
        MatrixMult(turn, all, product);
        std::memcpy(all, product, sizeof(all));
    }
    MatrixGetEulerAngles(all, rx, ry, rz);
}
