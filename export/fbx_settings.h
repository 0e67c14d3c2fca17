// Adds what is around the objects of an FBX file: what it is, its settings and its lists of types
// and takes.
// Internal to export/.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "export/fbx_node.h"
#include "export/options.h"

namespace exporters {

// What a file says about all of its objects. Its y axis points up.
struct FbxSettings {
    double centimetresPerUnit = 1.0;
    // The rate of the first motion, in frames per second; 0 if there is none.
    double framesPerSecond = 0.0;
    std::int64_t stop = 0;  // the time of the last key of all motions
};

// A motion in the list of takes.
struct FbxTake {
    std::string name;
    std::int64_t stop = 0;  // the time of its last key; the first is at 0
};

// Adds the program, the sources and the options of the import.
void AddFbxHeader(FbxFile& file, const Options& options);
// Each of the following functions fills a node of the file.
void AddFbxSettings(FbxNode& globalSettings, const FbxSettings& settings);
void AddFbxDocuments(FbxNode& documents, const std::vector<FbxTake>& takes);
// `counts` has the number of objects of each type.
void AddFbxDefinitions(FbxNode& definitions, const std::map<std::string, std::int32_t>& counts);
void AddFbxTakes(FbxNode& list, const std::vector<FbxTake>& takes);

}  // namespace exporters
