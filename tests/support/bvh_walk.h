// A plain forward-kinematics walk of a BVH file, written for the tests and sharing nothing with the
// importer. It uses column vectors, the first listed rotation is the outermost, and a position
// channel replaces its component of the offset.
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
    std::size_t firstValue = 0;         // index in a row of the value of its first channel

    // Whether two or three rotations are listed with x before y before z. The importer keeps the
    // values of such a joint, and the scene applies x first, so that the order is reversed.
    bool ListsRotationsInXyzOrder() const;
};

struct WalkFile {
    std::vector<WalkJoint> joints;  // in the file's order, with the end sites
    std::vector<std::vector<double>> frames;
    double frameTime = 0.0;

    // The positions of all joints. With `asScene` they are those of the imported scene, which
    // reverses rotations that are listed in the order x, y, z; otherwise those that the format
    // defines.
    std::vector<Vec3> Positions(std::size_t frame, bool asScene = true) const;
    // The length of the longest path from a root to a joint, along the offsets.
    double Size() const;
};

// Reads the sections of a file that is known to be valid.
std::vector<WalkFile> ReadBvh(const std::string& text);

}  // namespace support
