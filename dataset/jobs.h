// The list of imports that convert a data set.
#pragma once

#include <string>
#include <vector>

#include "dataset/capture_files.h"
#include "dataset/request.h"

namespace dataset {

struct Job {
    std::string source;        // the .bvh, the .amc, or an .asf that no .amc is paired with
    std::string skeleton;      // the .asf of an .amc; empty for other sources
    std::string relativePath;  // of the source, below the folder that the user named
    std::string output;        // below the output folder; may be empty for a refused job
    std::string refusal;       // why the job is not run; empty: it is run
    std::string sideOutput{};  // the second file of a format that has two, such as a .bin; or empty
};

// Returns the paths of the one or two files of the job's output, below the output folder.
std::vector<std::string> FilesOf(const Job& job);

// Returns one job for each capture file, sorted by source. Files and folders that cannot be read
// are in the list as refused jobs. The list depends on the files and the request alone. Throws
// RequestError where the list would be empty.
std::vector<Job> ListJobs(const Request& request);

}  // namespace dataset
