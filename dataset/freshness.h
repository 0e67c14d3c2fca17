#pragma once

#include <string>

#include "dataset/jobs.h"

namespace dataset {

// Whether all files of the job's output are there, not empty, and newer than all of its inputs.
bool IsUpToDate(const Job& job, const std::string& outDir);

// How large the files of the job's output are, in one line; empty where one is missing.
std::string SizesOf(const Job& job, const std::string& outDir);

}  // namespace dataset
