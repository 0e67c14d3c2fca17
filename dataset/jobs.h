// The list of imports that convert a data set.
#pragma once

#include <string>
#include <string_view>
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
    // The paths of the outputs relative to the output folder, one for each of Request::formats, in
    // that order. They differ only in their extensions. May be empty for a refused job.
    std::vector<std::string> outputs;
    std::string refusal;  // why the job is not run; empty if it is run
    // The second files of outputs whose format has two files, such as a .bin. Their paths are
    // relative to the output folder too.
    std::vector<std::string> sideOutputs{};
};

// Returns the paths of all files that the job writes, relative to the output folder.
std::vector<std::string> FilesOf(const Job& job);

// Returns the folder of the job's outputs, relative to the output folder and with a slash at the
// end. Returns an empty text if it is the output folder or if the job has no outputs.
std::string_view FolderOf(const Job& job);

// Returns a job for each capture file, sorted by source. An .asf file that is the skeleton of an
// .amc file gets no job. A file or folder that cannot be read gets a refused job. Throws
// RequestError if the list would be empty, or if a path of the request is wrong.
std::vector<Job> ListJobs(const Request& request);

}  // namespace dataset
