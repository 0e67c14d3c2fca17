// Converts rotations to the angles of the scene, fast enough for every frame of a motion.
// Internal to export/.
#pragma once

#include <array>

namespace exporters {

// Degrees around x, y and z; x turns first, then y, then z.
using SceneAngles = std::array<double, 3>;

// Returns the angles of a rotation with the rows `axes`, as in headless::Transform. x and z are
// from -180 to 180 degrees, y is from -90 to 90 degrees. If y is 90 or -90 degrees (gimbal lock),
// x is 0. headless::AnglesOf is more precise, but takes several times as long.
SceneAngles FastAnglesOf(const double axes[3][3]);

// Several sets of angles give the same rotation. Returns the one that is nearest to `before`, so
// that angles do not jump when a joint turns beyond 180 degrees.
SceneAngles AnglesNear(const SceneAngles& angles, const SceneAngles& before);

}  // namespace exporters
