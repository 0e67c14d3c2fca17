// Converts rotations to X-Y-Z angles: the angles x, y and z for which the product Rx * Ry * Rz is
// the rotation. The rotation about x acts first. Of the two solutions, the result is the one with
// |y| >= 90 degrees.
//
// ConvertRotations converts many rotations at a time, with vector instructions. ConvertRotation
// converts one, without vector instructions; it uses MatrixRotationX, Y and Z, MatrixMult and
// MatrixGetEulerAngles. The results of the two functions differ by at most 1e-9 degrees, so they
// need not be the same to the last bit. ConvertRotations calls ConvertRotation for a rotation that
// is close to gimbal lock, for one that gives NaN, and for one where rounding errors may decide
// between 180 and -180 degrees.
#pragma once

#include <cstddef>

// The number of lanes in a block.
inline constexpr std::size_t kRotationBlock = 128;

// The rotations to convert, one in each lane. A lane has three angles, angle[0][lane] to
// angle[2][lane], in degrees. All lanes are read, so unused lanes must be set, too. Any value will
// do for them.
struct RotationBlock {
    alignas(64) double angle[3][kRotationBlock];
};

// How the matrix of a lane is computed. R(axis, angle) is the matrix of a rotation by `angle` about
// `axis`. The matrix of the lane is the following product; its leftmost factor acts first:
// before * R(axis[0], angle[0]) * R(axis[1], angle[1]) * R(axis[2], angle[2]) * after
struct RotationProduct {
    int axis[3] = {0, 1, 2};              // 0 is x, 1 is y, 2 is z; the three must differ
    const double (*before)[4] = nullptr;  // a 4x4 matrix of the caller; null: the identity
    const double (*after)[4] = nullptr;   // a 4x4 matrix of the caller; null: the identity
};

// Replaces the angles of the first `lanes` lanes by the X-Y-Z angles of their matrices, in degrees.
void ConvertRotations(RotationBlock& block, const RotationProduct& product,
                      std::size_t lanes = kRotationBlock);

// Replaces the three angles, in degrees, by the X-Y-Z angles of their matrix.
void ConvertRotation(double angles[3], const RotationProduct& product);
