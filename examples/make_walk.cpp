// The program make_walk OUT_DIR writes the sample walk into the existing folder OUT_DIR. The files
// are walk.bvh, walk.asf and walk.amc. The exit status is 0 if all three files were written, 1 if
// there was an error, and 2 if the number of arguments is wrong.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "examples/gait_model.h"
#include "examples/skeleton.h"
#include "examples/write_acclaim.h"
#include "examples/write_bvh.h"

namespace {

bool WriteFile(const std::filesystem::path& path, const std::string& text) {
    // In binary mode, every operating system writes the same line ends.
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    if (file) return true;
    std::fprintf(stderr, "make_walk: cannot write %s\n", path.string().c_str());
    return false;
}

int MakeWalk(const std::filesystem::path& folder) {
    const examples::Skeleton skeleton = examples::MakeSkeleton();
    const examples::GaitModel model(skeleton);
    std::vector<examples::Pose> poses;
    poses.reserve(examples::kFrameCount);
    for (int frame = 0; frame < examples::kFrameCount; ++frame)
        poses.push_back(model.At(static_cast<double>(frame) / examples::kFramesPerCycle));
    const bool written = WriteFile(folder / "walk.bvh", examples::WriteBvh(skeleton, poses)) &&
                         WriteFile(folder / "walk.asf", examples::WriteAsf(skeleton)) &&
                         WriteFile(folder / "walk.amc", examples::WriteAmc(skeleton, poses));
    return written ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: make_walk OUT_DIR\n", stderr);
        return 2;
    }
    try {
        return MakeWalk(argv[1]);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "make_walk: %s\n", failure.what());
        return 1;
    }
}
