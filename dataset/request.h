// The arguments of "zkhost convert".
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

namespace dataset {

// The request cannot be carried out; the message says why.
class RequestError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct Request {
    std::vector<std::string> paths;  // files and folders, as the user named them
    std::string extension;           // of the outputs, with its dot
    std::string sideExtension;       // of the second file of each output; empty: there is none
    std::string outDir;
    std::string skeleton;  // the .asf of every .amc; empty: each is paired by folder and name
    // The options that every import gets, as words of a command line.
    std::vector<std::string> importOptions;
    std::vector<std::string> acclaimOptions;  // the options that only Acclaim files get
    std::string plugin;                       // its path; empty: the one installed with zkhost

    std::size_t parallel = 0;       // imports at a time; 0: as many as there are processors
    double timeLimitSeconds = 600;  // of one import; 0: no limit
    bool resume = false;            // skip files whose outputs are up to date
    bool plan = false;              // print the command lines and run nothing
};

}  // namespace dataset
