// Many rotations at a time: what MatrixRotationX, Y and Z, MatrixMult and MatrixGetEulerAngles give
// step by step, through vector sines and arc tangents. The angles are within 1e-9 degrees of
// theirs; close to gimbal lock, and where a half turn may be a positive or a negative
// one, a lane goes through the steps themselves.
#pragma once

#include <cstddef>

inline constexpr std::size_t kRotationBlock = 128;

// Three angles of each lane in degrees, one array an angle. All lanes are to be set, to anything
// where they are not used.
struct RotationBlock {
    alignas(64) double angle[3][kRotationBlock];
};

// What a lane's matrix is made of, the first factor acting first:
// before * R(axis[0], angle[0]) * R(axis[1], angle[1]) * R(axis[2], angle[2]) * behind
struct RotationProduct {
    int axis[3] = {0, 1, 2};              // 0 is x, 1 is y, 2 is z; all different
    const double (*before)[4] = nullptr;  // null is the identity
    const double (*behind)[4] = nullptr;
};

// Replaces the angles of the first `lanes` lanes by the X-Y-Z angles of their matrices, in degrees.
void ConvertRotations(RotationBlock& block, const RotationProduct& product,
                      std::size_t lanes = kRotationBlock);

// The same for one lane, step by step.
void ConvertRotation(double angles[3], const RotationProduct& product);
