// Angles for the tests of vector loops.
#pragma once

#include <cmath>
#include <random>

#include "math/pose_lanes.h"

namespace support {

// The angles of all lanes are random, some of them multiples of `step`, all in degrees.
inline math::AngleLanes SomeAngles(double step, double range, unsigned seed) {
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> any(-range, range);
    math::AngleLanes angles;
    for (auto& lanes : angles.angle)
        for (double& angle : lanes) {
            angle = any(random);
            if (random() % 4 == 0) angle = step * std::round(angle / step);
        }
    return angles;
}

}  // namespace support
