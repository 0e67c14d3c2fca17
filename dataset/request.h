// The arguments of "zkhost convert".
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

namespace dataset {

// Thrown if the request cannot be carried out; the message says why.
class RequestError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// A format of the outputs.
struct OutputFormat {
    std::string extension;        // the extension of an output, with its dot
    std::string sideExtension{};  // that of an output's second file; empty if there is none
};

struct Request {
    std::vector<std::string> paths;  // capture files and folders, as the user wrote them
    // Each import writes an output in each of these formats. No two of them have an extension in
    // common.
    std::vector<OutputFormat> formats;
    std::string outDir;  // the output folder
    // The path of the .asf file for all .amc files. If it is empty, the .asf of each .amc is looked
    // for in the folder of that .amc.
    std::string skeleton;
    // Options of "zkhost import", as words of a command line.
    std::vector<std::string> importOptions;   // for every import
    std::vector<std::string> acclaimOptions;  // only for imports of Acclaim files
    std::string plugin;  // the path of the plug-in; empty: take::LoadPlugin looks for it

    std::size_t parallel = 0;       // how many imports run at a time; 0: one for each processor
    double timeLimitSeconds = 600;  // an import that takes longer is killed; 0: no limit
    bool noClobber = false;         // do not run imports whose outputs exist already
    bool hashSources = false;       // whether the outputs store check sums of their sources
    bool resume = false;            // skip sources whose outputs are up to date
    bool plan = false;              // print the command lines and run nothing
    bool timing = false;            // print how long imports and outputs took together
};

}  // namespace dataset
