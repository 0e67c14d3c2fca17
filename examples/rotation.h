// Vectors and rotations for the sample walk. A rotation R turns the column vector p to R * p. The
// product A * B first applies B and then A. The coordinates are right-handed: +X points to the
// walker's left, +Y up and +Z ahead. Angles are in degrees.
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
// Returns a vector of length 1 with the direction of `v`. The length of `v` must not be 0.
Vec3 Normalized(const Vec3& v);

// The columns of a rotation matrix. Member x is the vector to which the rotation turns the X axis,
// and likewise y and z.
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
// Returns the rotation about `axis`, which must have the length 1.
Rotation TurnAbout(const Vec3& axis, double degrees);
// Turns about X first, then about Y, then about Z. Acclaim files call this order XYZ.
Rotation TurnXyz(const Vec3& degrees);

// Returns the angles with which TurnXyz(angles) is `r`. The angle about Y is from -90 to 90.
Vec3 AnglesXyz(const Rotation& r);
// Returns the angles x, y and z with which TurnZ(z) * TurnX(x) * TurnY(y) is `r`. The angle about X
// is from -90 to 90. A BVH file lists this order as Zrotation Xrotation Yrotation.
Vec3 AnglesZxy(const Rotation& r);

}  // namespace examples
