// A mesh for a skeleton, so that viewers show a moving figure.
// Internal to export/.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "export/skeleton_poses.h"
#include "headless/transform.h"

namespace exporters {

// Triangles with flat faces; each vertex moves with one joint.
struct GltfBody {
    std::vector<std::array<float, 3>> positions;
    std::vector<std::array<float, 3>> normals;
    std::vector<std::array<std::uint16_t, 4>> joints;  // only the first has a weight
    std::vector<std::uint32_t> indices;
};

// The most joints that a 16-bit JOINTS_0 index can address.
inline constexpr std::size_t kMostBodyJoints = 65536;

// A bone shape from each joint to each of its children that is at another point in the base pose,
// `globals`; the shape moves with the parent. A joint at neither end of such a shape gets a small
// one of its own. At most kMostBodyJoints joints.
GltfBody BuildBody(const std::vector<Joint>& joints, std::span<const headless::Transform> globals);

}  // namespace exporters
