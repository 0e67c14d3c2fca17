#include "bench/synthetic_acclaim.h"

#include <cmath>
#include <cstdio>
#include <map>

#include "bench/temporary_files.h"

namespace bench {
namespace {

constexpr int kBones = 30;
constexpr int kLimbs = 5;

// Returns how many values the bone has in each frame. All bones together have 56 values. The root
// has six values, which are not included.
int ValueCount(int bone) {
    return bone >= 28 ? 0 : 2;
}

std::string Bone(int bone) {
    return "bone" + std::to_string(bone);
}

std::string Skeleton() {
    std::string text =
        ":version 1.10\n:name bench\n:units\n mass 1.0\n length 0.45\n angle deg\n:root\n order TX "
        "TY "
        "TZ RX RY RZ\n axis XYZ\n position 0 0 0\n orientation 0 0 0\n:bonedata\n";
    for (int bone = 0; bone < kBones; ++bone) {
        text += " begin\n id " + std::to_string(bone + 1) + "\n name " + Bone(bone) +
                "\n direction 0.6 0.8 0\n length 2.5\n axis 20 " + std::to_string(bone) +
                " -10 XYZ\n";
        if (ValueCount(bone) > 0) text += " dof rx rz\n limits (-160 20)\n (-70 70)\n";
        text += " end\n";
    }
    text += ":hierarchy\n begin\n";
    std::string line = " root";
    for (int limb = 0; limb < kLimbs; ++limb)
        line += " " + Bone(limb);
    text += line + "\n";
    for (int bone = 0; bone + kLimbs < kBones; ++bone)
        text += " " + Bone(bone) + " " + Bone(bone + kLimbs) + "\n";
    return text + " end\n";
}

void AppendValue(std::string& text, double phase) {
    char number[32];
    const int length = std::snprintf(number, sizeof(number), " %.6g", 40.0 * std::sin(phase));
    text.append(number, static_cast<std::size_t>(length));
}

std::string Motion(std::int64_t frames) {
    std::string text = ":FULLY-SPECIFIED\n:DEGREES\n";
    for (std::int64_t frame = 1; frame <= frames; ++frame) {
        const double time = 0.05 * static_cast<double>(frame);
        text += std::to_string(frame) + "\nroot";
        for (int i = 0; i < 6; ++i)
            AppendValue(text, time + i);
        for (int bone = 0; bone < kBones; ++bone) {
            if (ValueCount(bone) == 0) continue;
            text += "\n" + Bone(bone);
            for (int i = 0; i < ValueCount(bone); ++i)
                AppendValue(text, time + bone + 0.5 * i);
        }
        text += '\n';
    }
    return text;
}

}  // namespace

AcclaimFiles SyntheticAcclaimFiles(std::int64_t frames) {
    static std::map<std::int64_t, AcclaimFiles> made;
    AcclaimFiles& files = made[frames];
    if (files.skeleton.empty()) {
        const std::string name = std::to_string(frames);
        files = {KeepTemporaryFile(name + ".asf", Skeleton()),
                 KeepTemporaryFile(name + ".amc", Motion(frames))};
    }
    return files;
}

}  // namespace bench
