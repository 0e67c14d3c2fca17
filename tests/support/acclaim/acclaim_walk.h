// A plain forward-kinematics walk of an ASF skeleton with an AMC motion, written for the tests and
// sharing nothing with the importer. Column vectors: each bone turns by L = C * M * inverse(C), C
// from its axis angles (x first), M from the motion's values in the order of its degrees of freedom
// (the first acts first); its children are at its end, direction * length.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/bvh_walk.h"

namespace support {

struct AcclaimBone {
    std::string name;
    int parent = -1;
    bool isRoot = false;
    bool isEnd = false;  // the end node of a leaf
    Vec3 position{};     // of a root
    Vec3 direction{};
    double length = 0.0;  // with the length factor
    Vec3 axis{};          // in the file's unit
    std::string axisOrder = "xyz";
    std::vector<std::string> dof;  // two lower-case characters each, "|" for the length
    // For each degree of freedom, in the file's unit; none if the file has none.
    std::vector<std::optional<std::pair<double, double>>> limits;
    // The hierarchy's attachments of a child to a parent are counted from 0; -1 is none.
    int attachment = -1;            // of this bone to its parent
    int firstChildAttachment = -1;  // of its first child to it
    std::size_t children = 0;

    bool HasRotation() const;
    bool AnimatesLength() const;
    bool AnimatesAnything() const;
};

struct AcclaimFrame {
    int number = 0;
    std::vector<std::vector<double>> values;  // of each bone, as in the file
};

struct AcclaimPair {
    std::vector<AcclaimBone> bones;  // in the file's order, then the ends of the leaves
    std::vector<AcclaimFrame> frames;
    bool degrees = true;
    double lengthFactor = 1.0;
    bool factorIsGiven = false;  // by the caller; it then scales the root's translations too
    bool limited = false;
    // Whether axis angles have the order that the file names: the angle of the first letter comes
    // first and acts first. Otherwise the order is x, y, z.
    bool axesAsListed = false;

    struct Pose {
        std::vector<Vec3> positions;
        // Whether a rotation of the bone, on its way from the file's axes to the skeleton's, has a
        // middle angle within 1e-5 of a right one.
        std::vector<bool> nearRightAngle;
        // The longest path from a root to a joint. Each bone has its length at rest or in this
        // frame, whichever is greater.
        double size = 0.0;
    };
    Pose At(const AcclaimFrame& frame) const;
};

struct AcclaimReading {
    std::optional<double> lengthFactor;  // replaces that of the file
    bool limited = false;
};

// Reads a pair that is known to be valid. With an empty motion there are no frames.
AcclaimPair ReadAcclaim(const std::string& asf, const std::string& amc,
                        const AcclaimReading& reading);

}  // namespace support
