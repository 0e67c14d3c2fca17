// The list of imports that convert a data set.
#pragma once

#include <string>
#include <vector>

#include "dataset/capture_files.h"
#include "dataset/request.h"

namespace dataset {

struct Job {
    // The path of the .bvh or .amc file, or of an .asf file that is not the skeleton of an .amc
    // file. For a refused job, it may be a file or folder that cannot be read.
    std::string source;
    std::string skeleton;      // the path of the .asf, if the source is an .amc; otherwise empty
    std::string relativePath;  // CaptureFile::relativePath of the source
    std::string output;        // path relative to the output folder; may be empty for a refused job
    std::string refusal;       // why the job is not run; empty if it is run
    // If an output of this format has a second file, such as a .bin, the path of that file relative
    // to the output folder. Empty if an output has only one file.
    std::string sideOutput{};
};

// Returns the paths of the one or two files of the job's output, relative to the output folder.
std::vector<std::string> FilesOf(const Job& job);

// Returns a job for each capture file, sorted by source. An .asf file that is the skeleton of an
// .amc file gets no job. A file or folder that cannot be read gets a refused job. Throws
// RequestError if the list would be empty, or if a path of the request is wrong.
std::vector<Job> ListJobs(const Request& request);

}  // namespace dataset
