// Computes the poses of a whole table as arrays, in one pass over the motion.
// Internal to export/.
#pragma once

#include <cstddef>
#include <vector>

#include "export/large_array.h"
#include "export/progress.h"
#include "export/quaternion_run.h"
#include "export/table_blocks.h"

namespace exporters {

// Each array has the rows of the table one after the other. A row has the columns one after the
// other, with three numbers for a position and four for a quaternion (x, y, z, w). Each rotation
// has two quaternions. In the first row it is the one with w >= 0. In every other row it is the one
// that is nearer to the quaternion of the row before.
template <class Element>
struct PoseArrays {
    LargeArray<Element> positions;         // global
    LargeArray<Element> quaternions;       // global
    LargeArray<Element> localPositions;    // as seen from the parent; of a top joint, global
    LargeArray<Element> localQuaternions;  // as seen from the parent; of a top joint, global
};

// Where the four arrays are in memory that the caller owns. Each of them has room for all rows.
template <class Element>
struct PosePointers {
    Element* positions = nullptr;
    Element* quaternions = nullptr;
    Element* localPositions = nullptr;
    Element* localQuaternions = nullptr;
};

// The quaternions of rows that follow each other.
struct PoseRuns {
    std::vector<QuaternionRun> global;  // of each column
    std::vector<QuaternionRun> local;

    void Resize(std::size_t columns) {
        global.resize(columns);
        local.resize(columns);
    }
};

// Computes `count` rows from the row `first` on, at most math::kPoseLanes, as the next rows of the
// runs. `to` is where these rows go. Throws what TableBlocks throws.
template <class Element>
void FillRows(const TableBlocks& blocks, std::size_t first, std::size_t count, PoseRuns& runs,
              TableBlocks::Scratch& scratch, const PosePointers<Element>& to);

// Negates one quaternion in each of the first `rows` rows of an array with `columns` columns.
template <class Element>
void NegateRows(std::size_t rows, std::size_t columns, Element* quaternion) {
    for (; rows > 0; --rows, quaternion += 4 * columns)
        for (std::size_t part = 0; part < 4; ++part)
            quaternion[part] = -quaternion[part];
}

// Computes the arrays. `Element` is float or double. At most `threads` threads compute the rows;
// with 0, there are as many as the system has processors. Throws what TableBlocks and `progress`
// throw.
template <class Element>
void FillPoseArrays(const TableBlocks& blocks, const PosePointers<Element>& arrays,
                    std::size_t threads, const Progress& progress);

// Like FillPoseArrays, but allocates the arrays.
template <class Element>
PoseArrays<Element> BuildPoseArrays(const TableBlocks& blocks, const Progress& progress);

}  // namespace exporters
