// Converts many rotations at a time to X-Y-Z angles, with vector sines and arc tangents. The scalar
// path for one rotation is ConvertRotation, which uses MatrixRotationX, Y and Z, MatrixMult and
// MatrixGetEulerAngles. The angles of both differ by at most 1e-9 degrees. Close to gimbal lock,
// and where rounding decides between 180 and -180 degrees, a lane is converted by the scalar path.
#pragma once

#include <cstddef>

inline constexpr std::size_t kRotationBlock = 128;

// The three angles of each lane, angle[i][lane], in degrees. All lanes must be set, those that are
// not used to any value.
struct RotationBlock {
    alignas(64) double angle[3][kRotationBlock];
};

// The factors of a lane's matrix. The first factor acts first:
// before * R(axis[0], angle[0]) * R(axis[1], angle[1]) * R(axis[2], angle[2]) * after
struct RotationProduct {
    int axis[3] = {0, 1, 2};              // 0 is x, 1 is y, 2 is z; all different
    const double (*before)[4] = nullptr;  // null is the identity; not owned
    const double (*after)[4] = nullptr;   // the same
};

// Replaces the angles of the first `lanes` lanes by the X-Y-Z angles of their matrices, in degrees.
void ConvertRotations(RotationBlock& block, const RotationProduct& product,
                      std::size_t lanes = kRotationBlock);

// The same for one lane: the scalar path.
void ConvertRotation(double angles[3], const RotationProduct& product);
