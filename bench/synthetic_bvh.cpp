#include "bench/synthetic_bvh.h"

#include <cmath>
#include <cstdio>
#include <map>
#include <utility>

#include "bench/temporary_files.h"

namespace bench {
namespace {

constexpr std::int64_t kLimbs = 5;

void Joint(std::string& text, const char* keyword, std::int64_t index, const char* channels) {
    text += std::string(keyword) + " Joint" + std::to_string(index) + "\n{\nOFFSET 1.5 " +
            std::to_string(index % 7) + ".25 -0.5\nCHANNELS " + channels + "\n";
}

void Hierarchy(std::string& text, std::int64_t joints) {
    constexpr const char* kTurns = "3 Zrotation Xrotation Yrotation";
    Joint(text, "HIERARCHY\nROOT", 0,
          "6 Xposition Yposition Zposition Zrotation Xrotation Yrotation");
    const std::int64_t rest = joints - 1;
    std::int64_t made = 0;
    for (std::int64_t limb = 0; limb < kLimbs; ++limb) {
        const std::int64_t length = rest / kLimbs + (limb < rest % kLimbs ? 1 : 0);
        for (std::int64_t i = 0; i < length; ++i)
            Joint(text, "JOINT", ++made, kTurns);
        if (length > 0) text += "End Site\n{\nOFFSET 0 1 0\n}\n";
        for (std::int64_t i = 0; i < length; ++i)
            text += "}\n";
    }
    text += "}\n";
}

void Motion(std::string& text, const BvhShape& shape) {
    text += "MOTION\nFrames: " + std::to_string(shape.frames) + "\nFrame Time: 0.008333\n";
    char number[32];
    const std::int64_t channels = Channels(shape);
    for (std::int64_t frame = 0; frame < shape.frames; ++frame) {
        for (std::int64_t c = 0; c < channels; ++c) {
            const double phase = 0.05 * static_cast<double>(frame) + 0.7 * static_cast<double>(c);
            const int length = std::snprintf(number, sizeof(number), "%.6f ",
                                             60.0 * std::sin(phase) + 20.0 * std::sin(3.1 * phase));
            text.append(number, static_cast<std::size_t>(length));
        }
        text.back() = '\n';
    }
}

}  // namespace

std::int64_t Channels(const BvhShape& shape) {
    return 6 + 3 * (shape.joints - 1);
}

std::string SyntheticBvh(const BvhShape& shape) {
    std::string text;
    Hierarchy(text, shape.joints);
    Motion(text, shape);
    return text;
}

std::string SyntheticBvhFile(const BvhShape& shape) {
    static std::map<std::pair<std::int64_t, std::int64_t>, std::string> paths;
    std::string& path = paths[{shape.joints, shape.frames}];
    if (path.empty()) {
        const std::string name =
            std::to_string(shape.joints) + "x" + std::to_string(shape.frames) + ".bvh";
        path = KeepTemporaryFile(name, SyntheticBvh(shape));
    }
    return path;
}

}  // namespace bench
