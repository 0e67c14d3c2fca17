// Rotations as 4x4 matrices, m[row][column], for row vectors (p' = p * M): in A * B, A acts first.
// Row 3 and column 3 are those of the identity. Angles are radians. No state, no allocation, no
// failure.
#pragma once

void MatrixIdentity(double m[4][4]);

// Turn Y towards Z, Z towards X and X towards Y, in this order, for a positive angle.
void MatrixRotationX(double m[4][4], double angle);
void MatrixRotationY(double m[4][4], double angle);
void MatrixRotationZ(double m[4][4], double angle);

// out = a * b. `out` must be neither `a` nor `b`: it is cleared before they are read.
void MatrixMult(const double a[4][4], const double b[4][4], double out[4][4]);

// m = Rx * Ry * Rz: X turns first.
void MatrixRotationXYZ(double m[4][4], double rx, double ry, double rz);
// m = Rz * Ry * Rx: Z turns first. With all angles negated, the inverse of MatrixRotationXYZ.
void MatrixRotationZYX(double m[4][4], double rx, double ry, double rz);

// The angle in [-pi, pi] with that sine and cosine, from whichever of the two is better
// conditioned.
double arcSinCos(double sinValue, double cosValue);

// Angles that MatrixRotationXYZ turns back into `m`. Of the two solutions the one with |ry| >=
// pi/2; at gimbal lock the free angle is split equally between rx and rz.
void MatrixGetEulerAngles(const double m[4][4], double& rx, double& ry, double& rz);

// Angles about the axes that `order` names ("zyx", any letter case; the last one turns first), as
// the same rotation's X-Y-Z angles. Three characters are read; one that names no axis repeats the
// rotation before it (the first: none).
void RotationToXYZ(const double angles[3], const char* order, double& rx, double& ry, double& rz);
