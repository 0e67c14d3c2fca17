// Vectors and rotations for the sample walk: column vectors (p' = R * p), so in A * B, B acts
// first. Right-handed; X is the walker's left, Y up, Z ahead. Angles are degrees.
#pragma once

#include <array>

namespace examples {

struct Vec3 {
    double x = 0;
    double y = 0;
    double z = 0;
};

Vec3 operator+(const Vec3& a, const Vec3& b);
Vec3 operator-(const Vec3& a, const Vec3& b);
Vec3 operator*(double factor, const Vec3& v);
double Dot(const Vec3& a, const Vec3& b);
Vec3 Cross(const Vec3& a, const Vec3& b);
double Length(const Vec3& v);
// `v` must not be of zero length.
Vec3 Normalized(const Vec3& v);

// A rotation: the vectors to which it turns the three axes.
struct Rotation {
    Vec3 x{1, 0, 0};
    Vec3 y{0, 1, 0};
    Vec3 z{0, 0, 1};
};

Vec3 operator*(const Rotation& r, const Vec3& v);
Rotation operator*(const Rotation& a, const Rotation& b);
Rotation Inverse(const Rotation& r);

Rotation TurnX(double degrees);
Rotation TurnY(double degrees);
Rotation TurnZ(double degrees);
// About `axis`, which is of unit length.
Rotation TurnAbout(const Vec3& axis, double degrees);
// x acts first, then y, then z: the order the Acclaim files name XYZ.
Rotation TurnXyz(const Vec3& degrees);

// The angles about x, y and z with r = TurnXyz(angles); y is from -90 to 90.
Vec3 AnglesXyz(const Rotation& r);
// The angles about x, y and z with r = TurnZ(z) * TurnX(x) * TurnY(y), which a BVH file lists as
// Zrotation Xrotation Yrotation; x is from -90 to 90.
Vec3 AnglesZxy(const Rotation& r);

}  // namespace examples
