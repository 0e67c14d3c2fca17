// Imports files, exports the scene, and remembers where everything stood.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "export/options.h"
#include "headless/scene.h"

namespace exported {

using Vec3 = std::array<double, 3>;

// How a file becomes a scene.
struct Road {
    bool nulls = true;
    bool effectorToLastBone = false;
    double lengthMultiplier = 0.0;  // of Acclaim files; 0: the file's own
};

// Resets the session and imports a .bvh, or an .asf with the .amc that follows it. False where the
// importer refuses a file.
bool Import(const std::vector<std::string>& files, const Road& road = {});
// The same with the text of a BVH file, whose models are named "take".
bool ImportText(const std::string& bvh, const Road& road = {});
const headless::Scene& CurrentScene();
// The motion that was imported last; null without one.
const headless::ActionSource* MotionOf(const headless::Object& model);

// Where the objects below a model stand in each frame of its motion, by the host's own evaluation,
// in the order in which exporters write them.
struct Take {
    std::vector<std::string> names;
    std::vector<double> frames;
    double secondsPerFrame = 0.0;
    std::vector<std::vector<Vec3>> positions;  // of each frame, of each object
    double size = 0.0;                         // the diagonal of the box around the first frame

    double Distance(const Take& other, std::size_t frame, std::size_t skipped) const;
};
Take Record(const headless::Object& model);
std::vector<Take> RecordAll();

// Writes the scene to a file of that extension, the numbers of a .gltf to the .bin beside it.
exporters::Notes ExportTo(const std::string& path, const exporters::Options& options = {});
// The scene as a file of that extension, read back as bytes. Throws what the exporter throws.
std::string Export(const std::string& extension, const exporters::Options& options = {},
                   exporters::Notes* notes = nullptr);

// Every file of the folder of real captures, motions behind their skeletons; empty where the folder
// is not there.
std::vector<std::vector<std::string>> RealCaptures();
// The samples of this project.
std::vector<std::vector<std::string>> Samples();

}  // namespace exported
