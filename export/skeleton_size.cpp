#include "export/skeleton_size.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "export/finite_check.h"

namespace exporters {

double BoxDiagonal(std::span<const headless::Transform> globals) {
    if (globals.empty()) return 0.0;
    constexpr double kFar = std::numeric_limits<double>::infinity();
    double least[3] = {kFar, kFar, kFar};
    double most[3] = {-kFar, -kFar, -kFar};
    for (const headless::Transform& global : globals) {
        for (int axis = 0; axis < 3; ++axis) {
            least[axis] = std::min(least[axis], global.origin[axis]);
            most[axis] = std::max(most[axis], global.origin[axis]);
        }
    }
    const double size = std::hypot(most[0] - least[0], most[1] - least[1], most[2] - least[2]);
    return IsFinite(size) ? size : 0.0;
}

}  // namespace exporters
