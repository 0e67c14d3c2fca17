// What the user asked of "zkhost convert".
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

namespace dataset {

// What was asked for cannot be done; says why.
class RequestError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct Request {
    std::vector<std::string> paths;  // files and folders, as the user named them
    std::string extension;           // of the outputs, with its dot
    std::string sideExtension;       // of the file beside each output; empty: there is none
    std::string outDir;
    std::string skeleton;  // the .asf of every .amc; empty: each is paired with its own
    // The options of each import, as words of a command line.
    std::vector<std::string> importOptions;
    std::vector<std::string> acclaimOptions;  // those that only Acclaim files take
    std::string plugin;                       // empty: the one that belongs to this program

    std::size_t parallel = 0;       // imports at a time; 0: as many as there are processors
    double timeLimitSeconds = 600;  // of one import; 0: none
    bool resume = false;
    bool plan = false;
};

}  // namespace dataset
