// The names of a data set's outputs.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "dataset/jobs.h"

namespace dataset {

inline constexpr std::string_view kIndexName = "index.csv";

// Names each output after its source: the path below the output folder is the source's relativePath
// with `extension` instead of the source's extension. Where several outputs would get the same
// name, ignoring case, they keep the source's extension before the new one: walk.bvh.glb,
// walk.amc.glb. Jobs whose outputs would still have the same name, or the name of a folder of other
// outputs, are all refused. Jobs that are refused already get no name. With a `sideExtension`, each
// output has a second file with the same name and that extension.
void NameOutputs(std::vector<Job>& jobs, std::string_view extension,
                 std::string_view sideExtension = {});

}  // namespace dataset
