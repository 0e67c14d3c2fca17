// Builds a mesh for a skeleton, so that viewers show a moving figure.
// Internal to export/.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "export/skeleton_poses.h"
#include "headless/transform.h"

namespace exporters {

// A mesh of triangles that share no vertices, so that each triangle has one normal. The first three
// lists have one element for each vertex. Each vertex moves with one joint. `indices` has three
// indices of vertices for each triangle.
struct BodyMesh {
    std::vector<std::array<float, 3>> positions;
    std::vector<std::array<float, 3>> normals;
    std::vector<std::array<std::uint16_t, 4>> joints;  // only the first of the four is used
    std::vector<std::uint32_t> indices;
};

// The most joints that a 16-bit JOINTS_0 index can address.
inline constexpr std::size_t kMostBodyJoints = 65536;

// If a joint and its parent joint have different positions in the base pose, a bone shape is put
// between them. The bone shape moves with the parent. A joint that no bone shape touches gets a
// small marker. But two kinds of such joints get no marker. One is a joint that has a parent joint
// and belongs to a chain. The other is a null whose parent object is a chain's effector. Both have
// the position of their parent joint. `globals` holds the global transform of each joint in the
// base pose. There must be at most kMostBodyJoints joints. Throws ExportError if a coordinate is
// not finite or too large for 32 bits.
BodyMesh BuildBody(const std::vector<Joint>& joints, std::span<const headless::Transform> globals);

}  // namespace exporters
