// Chooses the names of a data set's outputs.
#pragma once

#include <string_view>
#include <vector>

#include "dataset/jobs.h"
#include "dataset/request.h"

namespace dataset {

inline constexpr std::string_view kIndexName = "index.csv";

// Names the outputs of each job after its source. The path of an output below the output folder is
// the job's relativePath with the format's extension instead of the source's extension, which
// includes ".gz". If outputs of several jobs would get the same path, ignoring case, all outputs of
// these jobs keep the source's extension before the new one: walk.bvh.glb, walk.bvh.gz.glb. The
// same is done for a job with an output that would get the path of the index. If outputs of several
// jobs still have the same path, all these jobs are refused. A job is also refused if the path of
// one of its files is the path of a folder that contains other outputs. Jobs that are already
// refused get no outputs. A format with a second file gives each output a second file: the same
// path with its side extension.
void NameOutputs(std::vector<Job>& jobs, const std::vector<OutputFormat>& formats);

}  // namespace dataset
