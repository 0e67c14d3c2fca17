// A plain forward-kinematics walk of a BVH file, written for the tests and sharing nothing with the
// importer: column vectors, the first-listed rotation outermost, a position channel in the place of
// its component of the offset.
#pragma once

#include <string>
#include <vector>

#include "tests/support/math.h"

namespace support {

struct WalkJoint {
    std::string name;
    int parent = -1;
    bool isEndSite = false;
    Vec3 offset{};
    std::vector<std::string> channels;  // lower case, in the file's order
    std::size_t firstValue = 0;         // of its channels in a frame

    // The importer keeps rotations that are listed x before y before z as they are, and the scene
    // turns x first: such a joint is walked the other way round.
    bool KeepsRisingOrder() const;
};

struct WalkFile {
    std::vector<WalkJoint> joints;  // in the file's order, end sites too
    std::vector<std::vector<double>> frames;
    double frameTime = 0.0;

    // Scene positions of all joints; `turnRisingAsScene` false is the format's own reading.
    std::vector<Vec3> Positions(std::size_t frame, bool turnRisingAsScene = true) const;
    // The longest way from a root to a joint, through the offsets.
    double Size() const;
};

// The sections of a file that is known to be good.
std::vector<WalkFile> ReadBvh(const std::string& text);

}  // namespace support
