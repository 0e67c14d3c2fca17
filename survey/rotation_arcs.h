// Computes the angles of many rotations at a time.
#pragma once

#include <array>
#include <cstddef>

namespace survey {

// The most rotations in a block.
inline constexpr std::size_t kArcs = 64;

struct ArcBlock {
    using Lanes = std::array<double, kArcs>;

    // In degrees, by the index of the rotation in the list.
    std::array<Lanes, 3> listed;

    // The angles about x, y and z in radians, as ReexpressedAngles::Next computes them before it
    // looks at the frame before. Not valid at gimbal lock.
    std::array<Lanes, 3> angles;
    Lanes cosine;  // of the angle about y; it is never negative
};

// Fills `angles` and `cosine` for the first `lanes` lanes. The rotations are about the first
// `count` of `axes`, and the first one is the outermost. The results have the same bits as those of
// ReexpressedAngles::Next, so sines and arc tangents are computed one by one.
void ComputeArcs(const std::array<std::size_t, 3>& axes, std::size_t count, std::size_t lanes,
                 ArcBlock& block);

}  // namespace survey
