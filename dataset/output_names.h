// Where the outputs of a data set go.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "dataset/jobs.h"

namespace dataset {

inline constexpr std::string_view kIndexName = "index.csv";

// Names the outputs after their places: another extension in place of the source's. Where that
// would give one name to several (case aside), these keep the source's extension before the new
// one: walk.bvh.glb, walk.amc.glb. Jobs whose outputs would still take another's name, or the
// place of a folder that another needs, are refused, all of them. Jobs that are refused already
// are left alone. With `sideExtension`, each output has a second file beside it that ends so.
void NameOutputs(std::vector<Job>& jobs, std::string_view extension,
                 std::string_view sideExtension = {});

}  // namespace dataset
