// Imports files, exports the scene, and records the positions of all objects.
#pragma once

#include <string>
#include <vector>

#include "export/formats.h"
#include "export/options.h"
#include "headless/scene.h"
#include "tests/support/math.h"

namespace exported {

using support::Vec3;

// How a file is imported.
struct ImportSettings {
    bool nulls = true;
    bool effectorToLastBone = false;
    double lengthMultiplier = 0.0;  // for Acclaim files; 0 for the file's own
};

// Resets the session and imports a .bvh file, or an .asf file and the .amc file that follows it.
// Returns false if the importer refuses a file.
bool Import(const std::vector<std::string>& files, const ImportSettings& settings = {});
// Imports the text of a BVH file in the same way. Its first model is named "take".
bool ImportText(const std::string& bvh, const ImportSettings& settings = {});
const headless::Scene& CurrentScene();
// The motion that was imported last. Null if there is none.
const headless::ActionSource* MotionOf(const headless::Object& model);

// The positions of the joints of a model in each frame of its motion, as the host evaluates them.
// The joints are in the order in which exporters write them if the file is not known.
struct Take {
    std::vector<std::string> names;
    std::vector<double> frames;  // empty without motion; `positions` then has one frame
    double secondsPerFrame = 0.0;
    std::vector<std::vector<Vec3>> positions;  // positions[frame][object]
    double size = 0.0;                         // the diagonal of the box around the first frame

    // The greatest distance in a frame between an object and that of `other`, whose first `skipped`
    // objects are left out.
    double Distance(const Take& other, std::size_t frame, std::size_t skipped) const;
};
Take Record(const headless::Object& model);
std::vector<Take> RecordAll();

// Writes the scene to the file, in the format of its extension. The second file of a .gltf is the
// .bin file in the same folder.
exporters::Notes ExportTo(const std::string& path, const exporters::Options& options = {});
// Writes the scene to a file with this extension and returns its bytes. Throws what the exporter
// throws.
std::string Export(const std::string& extension, const exporters::Options& options = {},
                   exporters::Notes* notes = nullptr);

// The formats that this build writes: all, or all but pages if it has no viewer.
std::vector<exporters::Format> WrittenFormats();

// Every BVH file of the folder with real captures, and its Acclaim pairs, each with the skeleton
// first. The build must have such a folder.
std::vector<std::vector<std::string>> RealCaptures();
// The samples in examples/: the .bvh file, then the .asf file with the .amc file.
std::vector<std::vector<std::string>> Samples();

}  // namespace exported
