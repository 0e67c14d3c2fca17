// Forward kinematics of the sample files, computed from their text without any code of the program
// that wrote them. Column vectors (p' = R * p), centimetres, degrees. Throws std::runtime_error for
// a file that has not the form of the samples.
#pragma once

#include <array>
#include <map>
#include <string>
#include <vector>

#include "tests/support/math.h"

namespace examples_test {

using support::Add;
using support::Distance;
using support::Matrix3;
using support::Vec3;

struct Joint {
    Vec3 position;
    Matrix3 axes;  // the rotation from the joint to the world
};

// The joints by name, one entry a frame. An end site is named after its joint, with "_End".
using Walk = std::map<std::string, std::vector<Joint>>;

struct BvhWalk {
    double frameSeconds = 0;
    std::map<std::string, Vec3> offsets;
    std::vector<std::vector<double>> rows;  // the values of each frame, as in the file
    Walk walk;
};
BvhWalk ReadBvh(const std::string& path);

struct AsfBone {
    Vec3 direction{};
    double length = 0;  // in the file's unit
    Vec3 axis{};
    std::string dof;  // the letters of its rotations
    std::vector<std::array<double, 2>> limits;
    std::string parent;
};

struct AcclaimWalk {
    int samplesPerSecond = 0;
    double lengthFactor = 0;
    std::map<std::string, AsfBone> bones;
    // The values of each frame by bone, as in the file.
    std::vector<std::map<std::string, std::vector<double>>> rows;
    // The position of a bone is its start, like that of a joint. The root is "root".
    Walk walk;
};
AcclaimWalk ReadAcclaim(const std::string& asfPath, const std::string& amcPath);

}  // namespace examples_test
