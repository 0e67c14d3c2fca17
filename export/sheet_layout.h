// Arranges the poses of a contact sheet: which frames are shown, from where, and at which
// positions. Internal to export/.
#pragma once

#include <cstddef>
#include <vector>

#include "export/options.h"
#include "export/progress.h"
#include "export/tables.h"

namespace exporters {

struct SheetPoint {
    double x = 0.0;  // to the right
    double y = 0.0;  // downwards
};

// The area of the poses, in pixels.
inline constexpr double kSheetWidth = 760.0;
inline constexpr double kSheetHeight = 240.0;

// All positions are in pixels. The poses are in an area of kSheetWidth x kSheetHeight whose bottom
// is the ground.
struct SheetLayout {
    // For each pose, the position of each joint, in the order of the table's columns.
    std::vector<std::vector<SheetPoint>> poses;
    double tallest = 0.0;  // the height of the tallest pose
    // The path of the first joint on the ground, seen from above, with the viewer at the bottom. It
    // lies around 0, in the same scale as the poses.
    std::vector<SheetPoint> path;
    std::vector<std::size_t> marks;  // for each pose, the index of its position in `path`
    double height = 0.0;             // of the figure, in the table's unit
    double metresPerUnit = 0.0;      // 0 if the unit is not known
};

// Chooses up to eight frames at even distances in time. If the figure walks on, it is seen from the
// side, and the poses follow its path, from left to right. Otherwise it is seen from the front or
// from the back, and the poses are side by side. Throws what Table::Row and `progress` throw.
SheetLayout ArrangeSheet(const Table& table, const Options& options, const Progress& progress);

}  // namespace exporters
