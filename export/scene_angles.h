// Converts rotations to the angles of the scene, fast enough for every frame of a motion.
// Internal to export/.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "export/clean_skeleton.h"
#include "headless/scene.h"

namespace exporters {

// Degrees around x, y and z; x turns first, then y, then z.
using SceneAngles = std::array<double, 3>;

// Returns the angles of a rotation with the rows `axes`, as in headless::Transform. x and z are
// from -180 to 180 degrees, y is from -90 to 90 degrees. If y is 90 or -90 degrees (gimbal lock),
// x is 0. headless::AnglesOf is more precise, but takes several times as long.
SceneAngles FastAnglesOf(const double axes[3][3]);

// Several sets of angles give the same rotation. Returns the one that is nearest to `before`, so
// that angles do not jump when a joint turns beyond 180 degrees. `angles` comes from FastAnglesOf.
SceneAngles AnglesNear(const SceneAngles& angles, const SceneAngles& before);

// Reads the angles that the scene itself has for the object of each joint, row after row.
class SceneAngleReader {
  public:
    // `motion` may be null. Keeps references to the scene and to `joints`.
    SceneAngleReader(const headless::Scene& scene, const headless::Object& model,
                     const headless::ActionSource* motion, std::span<const Joint> joints);

    // The angles in the last key that is not after `frame`, or at rest where the motion does not
    // turn the object. A joint must be read at rising frames.
    SceneAngles At(std::size_t joint, double frame);

  private:
    struct Track {
        const headless::Keys* keys = nullptr;  // null if the angle does not change
        double value = 0.0;
        std::size_t key = 0;  // the key that was read last
    };

    std::vector<std::array<Track, 3>> tracks_;  // for each joint
};

}  // namespace exporters
