// A plain forward-kinematics walk of an ASF skeleton with an AMC motion, written for the tests and
// sharing nothing with the importer. Column vectors: each bone turns by L = C * M * inverse(C), C
// from its axis angles (x first), M from the motion's values in the order of its degrees of freedom
// (the first acts first); its children stand at its end, direction * length.
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
    bool isEnd = false;  // the node that stands at the end of a leaf
    Vec3 position{};     // of a root
    Vec3 direction{};
    double length = 0.0;  // with the length factor
    Vec3 axis{};          // in the file's unit
    std::string axisOrder = "xyz";
    std::vector<std::string> dof;  // two lower-case characters each, "|" for the length
    // By degree of freedom, in the file's unit; none where the file has none.
    std::vector<std::optional<std::pair<double, double>>> limits;
    int attachedAs = -1;    // which attachment of the hierarchy made it a child
    int firstChildAt = -1;  // which attachment first made it a parent
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
    bool factorIsGiven = false;  // from outside, and then also that of the root's translations
    bool limited = false;
    // Axis orders are the files' own: the first letter's angle comes first and turns first. Without
    // it they are x y z.
    bool axesAsListed = false;

    struct Pose {
        std::vector<Vec3> positions;
        // Whether a rotation of the bone, on its way from the file's axes to the skeleton's, has a
        // middle angle within 1e-5 of a right one.
        std::vector<bool> nearRightAngle;
        // The longest way from a root to a joint, with each bone as long as it is at rest or here.
        double size = 0.0;
    };
    Pose At(const AcclaimFrame& frame) const;
};

struct AcclaimReading {
    std::optional<double> lengthFactor;  // instead of the file's
    bool limited = false;
};

// A pair that is known to be good; without a motion there are no frames.
AcclaimPair ReadAcclaim(const std::string& asf, const std::string& amc,
                        const AcclaimReading& reading);

}  // namespace support
