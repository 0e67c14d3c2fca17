// Adds the positions and quaternions of a table to a .npz file.
// Internal to export/.
#pragma once

#include "export/array_writer.h"
#include "export/progress.h"
#include "export/table_blocks.h"

namespace exporters {

// Adds the arrays positions, quaternions, local_positions and local_quaternions, with rows x
// columns x 3 or 4 numbers, which are floats or doubles; see PoseArrays. If the file can be written
// out of order, the poses are written while others are computed, so they need little memory.
// Otherwise they are all computed first. The bytes are the same. Throws what TableBlocks,
// `progress` and the sink throw.
void AddPoses(ArrayWriter& arrays, const TableBlocks& blocks, bool areFloats,
              const Progress& progress);

}  // namespace exporters
