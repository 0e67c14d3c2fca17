// Rotations as 4x4 matrices, m[row][column], for row vectors (p' = p * M): in A * B, A acts first.
// Row 3 and column 3, counted from 0, are those of the identity. Angles are in radians. The
// functions have no state, allocate nothing and cannot fail.
#pragma once

void MatrixIdentity(double m[4][4]);

// A positive angle about X turns the Y axis towards Z. About Y it turns Z towards X, and about Z it
// turns X towards Y.
void MatrixRotationX(double m[4][4], double angle);
void MatrixRotationY(double m[4][4], double angle);
void MatrixRotationZ(double m[4][4], double angle);

// out = a * b. `out` must be neither `a` nor `b`, because `out` is cleared before `a` and `b` are
// read.
void MatrixMult(const double a[4][4], const double b[4][4], double out[4][4]);

// m = Rx * Ry * Rz: X acts first.
void MatrixRotationXYZ(double m[4][4], double rx, double ry, double rz);
// m = Rz * Ry * Rx: Z acts first. With all angles negated, this is the inverse of
// MatrixRotationXYZ.
void MatrixRotationZYX(double m[4][4], double rx, double ry, double rz);

// The angle, from -pi to pi, that has this sine and this cosine. It is computed with asin or acos,
// whichever is more accurate for that angle.
double arcSinCos(double sinValue, double cosValue);

// The angles from which MatrixRotationXYZ computes `m` again. There are two solutions; the result
// is the one with |ry| >= pi/2. At gimbal lock only the sum or the difference of rx and rz is
// known. It is split equally between rx and rz.
void MatrixGetEulerAngles(const double m[4][4], double& rx, double& ry, double& rz);

// Converts three rotations, by angles[i] about the axis order[i], to the X-Y-Z angles of their
// product. `order` has three letters of either case, such as "zyx". The rotation of the last letter
// acts first. If a character is not an axis, the rotation of the character before it is applied
// once more. If there is no character before it, it is ignored.
void RotationToXYZ(const double angles[3], const char* order, double& rx, double& ry, double& rz);
