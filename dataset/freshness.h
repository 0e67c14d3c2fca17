#pragma once

#include <string>

#include "dataset/jobs.h"

namespace dataset {

// Returns whether the job's outputs are up to date: all their files exist, are not empty and are
// newer than the job's inputs. Returns false if an input cannot be found.
bool IsUpToDate(const Job& job, const std::string& outDir);

// Returns the sizes of all files of the job's outputs in bytes, separated by spaces. Returns an
// empty text if one of the files is missing.
std::string SizesOf(const Job& job, const std::string& outDir);

}  // namespace dataset
