// write_samples OUT_DIR [captures]: writes exports in every format, for readers that are no part of
// this project. For each sample NAME it also writes NAME.json with the positions of all joints in
// up to twenty frames, as the host evaluates them. With "captures" it writes the real captures
// instead of the samples, and only as .glb.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "tests/export/exported.h"
#include "tests/support/math.h"
#include "tests/support/temporary_folder.h"

namespace {

using nlohmann::json;

constexpr std::size_t kMoments = 20;

struct Sample {
    std::string name;
    std::vector<std::string> files;
    exported::ImportSettings settings;
    exporters::Options options;
};

// A file with unusual features: two models, one of which has two objects directly under it; joints
// that move; names that some readers cannot handle; an end site without length.
constexpr const char* kOddBvh =
    "HIERARCHY\n"
    "ROOT a:Hips\n{\nOFFSET 1 2 3\n"
    "CHANNELS 6 Xposition Yposition Zposition Zrotation Xrotation Yrotation\n"
    "JOINT leg.L\n{\nOFFSET 0.5 -1 0\nCHANNELS 3 Yrotation Xrotation Zrotation\n"
    "End Site\n{\nOFFSET 0 -1 0\n}\n}\n"
    "JOINT legL\n{\nOFFSET -0.5 -1 0\n"
    "CHANNELS 6 Xposition Yposition Zposition Xrotation Zrotation Yrotation\n"
    "End Site\n{\nOFFSET 0 0 0\n}\n}\n"
    "JOINT \xE8\x85\xB0\n{\nOFFSET 0 1 0\nCHANNELS 0\n}\n}\n"
    "ROOT }\n{\nOFFSET 4 0 0\nCHANNELS 3 Zrotation Xrotation Yrotation\n"
    "JOINT MOTION\n{\nOFFSET 0 1 0\nCHANNELS 1 Xrotation\n}\n}\n"
    "MOTION\nFrames: 3\nFrame Time: 0.1\n"
    "0 0 0 0 0 0  0 0 0  -0.5 -1 0 0 0 0  0 0 0  0\n"
    "1 2 3 90 80 70  170 10 20  -0.6 -1.5 0.25 10 20 30  0 90 0  90\n"
    "2 3 4 180 89.9999 -70  -170 10 20  -0.7 -1 0 190 20 30  0 90 90  180\n"
    "HIERARCHY\n"
    "ROOT Hips\n{\nOFFSET 0 0 0\n"
    "CHANNELS 6 Xposition Yposition Zposition Zrotation Xrotation Yrotation\n"
    "JOINT leg.L\n{\nOFFSET 0 -1 0\nCHANNELS 3 Zrotation Xrotation Yrotation\n"
    "End Site\n{\nOFFSET 0 -1 0\n}\n}\n}\n"
    "MOTION\nFrames: 2\nFrame Time: 0.1\n"
    "0 0 0 0 0 0 0 0 0\n"
    "1 1 1 10 20 30 40 50 60\n";

// One frame without a rate, which is only a pose.
constexpr const char* kPoseBvh =
    "HIERARCHY\nROOT Hips\n{\nOFFSET 0 1 0\n"
    "CHANNELS 6 Xposition Yposition Zposition Zrotation Xrotation Yrotation\n"
    "End Site\n{\nOFFSET 0 1 0\n}\n}\nMOTION\nFrames: 1\nFrame Time: 0\n0 1 0 0 0 0\n";

// The position as the options change it.
support::Vec3 Transformed(const support::Vec3& position, const exporters::Options& options) {
    support::Vec3 out = position;
    if (options.up == exporters::UpAxis::Z) out = {position[0], position[2], -position[1]};
    if (options.up == exporters::UpAxis::X) out = {-position[1], position[0], position[2]};
    for (double& coordinate : out)
        coordinate *= options.scale;
    return out;
}

double HeightOf(const std::vector<support::Vec3>& positions) {
    const auto [least, most] =
        std::minmax_element(positions.begin(), positions.end(),
                            [](const auto& a, const auto& b) { return a[1] < b[1]; });
    return positions.empty() ? 0.0 : (*most)[1] - (*least)[1];
}

// What NAME.json says about a model.
json Expected(const exported::Take& take, const exporters::Options& options) {
    json model = {{"joints", take.names}, {"frames", take.positions.size()}};
    model["secondsPerFrame"] =
        options.framesPerSecond ? 1.0 / *options.framesPerSecond : take.secondsPerFrame;
    json moments = json::array();
    const std::size_t last = take.positions.size() - 1;
    const std::size_t count = std::min(kMoments, last + 1);
    double height = 0.0;
    for (std::size_t moment = 0; moment < count; ++moment) {
        const std::size_t frame = count == 1 ? 0 : moment * last / (count - 1);
        const double first = take.frames.empty() ? 0.0 : take.frames.front();
        const double number = take.frames.empty() ? 0.0 : take.frames[frame];
        std::vector<support::Vec3> positions;
        for (const support::Vec3& position : take.positions[frame])
            positions.push_back(Transformed(position, options));
        height = std::max(height, HeightOf(positions));
        moments.push_back({{"row", frame},
                           {"time", (number - first) * model["secondsPerFrame"].get<double>()},
                           {"positions", positions}});
    }
    model["moments"] = moments;
    model["height"] = height > 0.0 ? height : take.size * options.scale;
    return model;
}

std::vector<Sample> AllSamples(const std::filesystem::path& folder) {
    const auto file = [&](const char* name, const char* text) {
        const std::string path = (folder / name).string();
        std::ofstream(path, std::ios::binary) << text;
        return path;
    };
    const auto samples = exported::Samples();
    const std::string odd = file("odd-source.bvh", kOddBvh);
    const std::string pose = file("pose-source.bvh", kPoseBvh);
    const exported::ImportSettings nulls;
    const exported::ImportSettings bones{.nulls = false};
    exporters::Options plain;
    exporters::Options noMesh;
    noMesh.mesh = false;
    exporters::Options metres;
    metres.scale = 0.01;
    exporters::Options turned;
    turned.up = exporters::UpAxis::Z;
    turned.scale = 0.01;
    turned.framesPerSecond = 50.0;
    exporters::Options aimed;
    aimed.aim = true;
    exporters::Options aimedAndTurned = turned;
    aimedAndTurned.aim = true;
    aimedAndTurned.up = exporters::UpAxis::X;
    exporters::Options apart;
    apart.animationPerModel = true;
    return {
        {"walk-bvh-nulls", samples[0], nulls, plain},
        {"walk-bvh-nulls-no-mesh", samples[0], nulls, noMesh},
        {"walk-bvh-bones", samples[0], bones, plain},
        {"walk-bvh-bones-no-mesh", samples[0], bones, noMesh},
        {"walk-acclaim-nulls", samples[1], nulls, plain},
        {"walk-acclaim-nulls-no-mesh", samples[1], nulls, noMesh},
        {"walk-acclaim-bones", samples[1], bones, plain},
        {"walk-acclaim-bones-no-mesh", samples[1], bones, noMesh},
        {"walk-turned", samples[0], nulls, turned},
        {"walk-metres", samples[0], nulls, metres},
        {"walk-bvh-nulls-aimed", samples[0], nulls, aimed},
        {"walk-bvh-bones-aimed", samples[0], bones, aimedAndTurned},
        {"odd-nulls", {odd}, nulls, plain},
        {"odd-nulls-aimed", {odd}, nulls, aimed},
        {"odd-nulls-apart", {odd}, nulls, apart},
        {"odd-nulls-turned", {odd}, nulls, turned},
        {"pose", {pose}, nulls, plain},
        {"skeleton-alone", {samples[1][0]}, bones, plain},
    };
}

std::vector<Sample> AllCaptures() {
    std::vector<Sample> samples;
    for (const auto& files : exported::RealCaptures()) {
        const std::string name = std::filesystem::path(files.back()).stem().string();
        samples.push_back({name + "-nulls", files, {.nulls = true}, {}});
        samples.push_back({name + "-bones", files, {.nulls = false}, {}});
    }
    return samples;
}

// Returns false if the importer refuses a file.
bool WriteSample(const std::filesystem::path& folder, Sample sample,
                 const std::vector<const char*>& extensions) {
    if (!exported::Import(sample.files, sample.settings)) return false;
    sample.options.source = {{}, "test", {{"nulls", "true"}}, "write_samples"};
    for (const std::string& file : sample.files)
        sample.options.source.files.push_back({file});
    for (const char* extension : extensions)
        exported::ExportTo((folder / (sample.name + extension)).string(), sample.options);
    json expected = json::array();
    for (exported::Take& take : exported::RecordAll()) {
        const bool hasRate = sample.options.framesPerSecond || take.secondsPerFrame > 0.0;
        if (!hasRate) take.frames.clear();
        if (!hasRate) take.positions.resize(1);
        expected.push_back(Expected(take, sample.options));
    }
    std::ofstream(folder / (sample.name + ".json")) << expected;
    return true;
}

}  // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): an exception should end the program.
int main(int count, char** arguments) {
    if (count < 2) return 2;
    const bool captures = count > 2;
    const std::filesystem::path folder = arguments[1];
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    if (captures) {
        for (const Sample& sample : AllCaptures())
            WriteSample(folder, sample, {".glb"});
        return 0;
    }
    for (const Sample& sample : AllSamples(folder)) {
        if (WriteSample(folder, sample, {".glb", ".gltf", ".bvh", ".csv", ".npz"})) continue;
        std::fprintf(stderr, "%s: cannot be imported\n", sample.name.c_str());
        return 1;
    }
    return 0;
}
