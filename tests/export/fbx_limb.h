// A small capture for tests of .fbx files, and what is read from such files.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/export/exported.h"
#include "tests/export/fbx_file.h"

namespace exported {

inline constexpr double kFbxSecond = 46'186'158'000.0;

// Hips move along y, turn around z and keep x and y at 5 and 0 degrees. The arm does not move, and
// the leg moves along x.
inline const std::string kLimb =
    "HIERARCHY\nROOT Hips\n{\nOFFSET 1 2 3\nCHANNELS 6 Xposition Yposition Zposition Zrotation "
    "Yrotation Xrotation\nJOINT Arm\n{\nOFFSET 0 90 0\nCHANNELS 3 Zrotation Yrotation Xrotation\n"
    "End Site\n{\nOFFSET 0 80 0\n}\n}\nJOINT Leg\n{\nOFFSET 2 -4 0\nCHANNELS 6 Xposition Yposition "
    "Zposition Zrotation Yrotation Xrotation\n}\n}\n"
    "MOTION\nFrames: 4\nFrame Time: 0.3\n"
    "1 2 3 0 0 5  0 0 0  2 -4 0 0 0 0\n"
    "1 3 3 90.1 0 5  0 0 0  3 -4 0 0 0 0\n"
    "1 5 3 -170 0 5  0 0 0  4 -4 0 0 0 0\n"
    "1 5 3 -10 0 5  0 0 0  5.1 -4 0 0 0 0\n";

inline FbxFileReader Fbx(const exporters::Options& options = {},
                         exporters::Notes* notes = nullptr) {
    return FbxFileReader(exported::Export(".fbx", options, notes));
}

inline std::vector<float> Values(const FbxRecord* curve) {
    return curve ? (*curve)["KeyValueFloat"].Get<std::vector<float>>() : std::vector<float>();
}
inline std::vector<std::int64_t> Times(const FbxRecord* curve) {
    return curve ? (*curve)["KeyTime"].Get<std::vector<std::int64_t>>()
                 : std::vector<std::int64_t>();
}

}  // namespace exported
