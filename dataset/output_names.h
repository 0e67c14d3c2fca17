// Chooses the names of a data set's outputs.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "dataset/jobs.h"

namespace dataset {

inline constexpr std::string_view kIndexName = "index.csv";

// Names each output after its source. The output's path below the output folder is the job's
// relativePath with `extension` instead of the source's extension. If several outputs would get the
// same path, ignoring case, their names keep the source's extension before the new one:
// walk.bvh.glb, walk.amc.glb. The same is done for an output that would get the path of the index.
// If several outputs still have the same path, all their jobs are refused. A job is also refused if
// the path of its output is the path of a folder that contains other outputs. Jobs that are already
// refused get no output. If `sideExtension` is not empty, each output has a second file: the same
// path with that extension.
void NameOutputs(std::vector<Job>& jobs, std::string_view extension,
                 std::string_view sideExtension = {});

}  // namespace dataset
