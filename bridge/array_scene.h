// Builds a scene from arrays of numbers, such as the output of a model.
// Part of the public surface of the library.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "export/file_skeleton.h"
#include "headless/session.h"
#include "text/api.h"

namespace bridge {

struct ArrayMotion {
    std::string name;  // of the model, in UTF-8
    // The joints; a parent comes before its children.
    exporters::FileSkeleton skeleton;
    std::vector<std::array<double, 3>> offsets;  // one for each joint, as seen from its parent
    // The numbers of the frames, strictly rising. A motion has at least one.
    std::vector<double> frames;
    // The seconds from a frame to the one with the next number. If it is 0, the scene has no motion
    // but only a base pose.
    double secondsPerFrame = 0.0;
    // Frame after frame, in a frame joint after joint: three numbers for a position, four for a
    // quaternion (x, y, z, w), both as seen from the parent joint. All are finite, and no
    // quaternion is zero. A joint whose positions are all equal to its offset gets no curves for
    // them.
    const double* positions = nullptr;
    const double* quaternions = nullptr;
};

// Builds a model of nulls with a base pose and a motion, as an import of a file with this motion
// does. The base pose has the offsets and no rotations. Waits while another thread imports. Throws
// std::bad_alloc when memory runs out.
ZKMOCAP_API headless::Recording BuildScene(const ArrayMotion& motion);

}  // namespace bridge
