#pragma once

#include <string>

#include "dataset/jobs.h"

namespace dataset {

// Returns whether all files of the job's output exist, are not empty and are newer than its inputs.
bool IsUpToDate(const Job& job, const std::string& outDir);

// Returns the sizes of the output's files in bytes, separated by spaces; empty where one is
// missing.
std::string SizesOf(const Job& job, const std::string& outDir);

}  // namespace dataset
