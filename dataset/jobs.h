// A data set as a list of imports.
#pragma once

#include <string>
#include <vector>

#include "dataset/capture_files.h"
#include "dataset/request.h"

namespace dataset {

struct Job {
    std::string source;        // the .bvh, the .amc, or an .asf that no .amc is paired with
    std::string skeleton;      // of an .amc; empty otherwise
    std::string place;         // of the source in the tree that is kept
    std::string output;        // below the output folder; empty where nothing can be made
    std::string refusal;       // why it is not run; empty: it is
    std::string sideOutput{};  // the file beside the output, of a format with two; empty: none
};

// All the files of the job's output, below the output folder.
std::vector<std::string> FilesOf(const Job& job);

// Sorted by source: every capture file, and what could not be taken as one, refused. The same for
// the same files and request. Throws RequestError where there is nothing at all.
std::vector<Job> ListJobs(const Request& request);

}  // namespace dataset
