// Forward kinematics of the sample files, straight from their text and with nothing of the program
// that wrote them. Column vectors (p' = R * p), centimetres, degrees. A file that is not of the
// form the samples have fails with std::runtime_error.
#pragma once

#include <array>
#include <map>
#include <string>
#include <vector>

namespace examples_test {

using Point = std::array<double, 3>;
using Axes = std::array<Point, 3>;  // rows of the rotation from the joint to the world

struct Joint {
    Point place;
    Axes axes;
};

// The joints by name, one entry a frame. An end site is named after its joint, with "_End".
using Walk = std::map<std::string, std::vector<Joint>>;

struct BvhWalk {
    double frameSeconds = 0;
    std::map<std::string, Point> offsets;
    std::vector<std::vector<double>> rows;  // the values of each frame, as they stand
    Walk walk;
};
BvhWalk ReadBvh(const std::string& path);

struct AsfBone {
    Point direction{};
    double length = 0;  // in the file's unit
    Point axis{};
    std::string dof;  // the letters of its rotations
    std::vector<std::array<double, 2>> limits;
    std::string parent;
};

struct AcclaimWalk {
    int samplesPerSecond = 0;
    double lengthFactor = 0;
    std::map<std::string, AsfBone> bones;
    // The values of each frame by bone, as they stand.
    std::vector<std::map<std::string, std::vector<double>>> rows;
    // A bone is where it starts, like a joint; the root is "root".
    Walk walk;
};
AcclaimWalk ReadAcclaim(const std::string& asfPath, const std::string& amcPath);

Point Add(const Point& a, const Point& b);
Point Apply(const Axes& axes, const Point& v);
double Distance(const Point& a, const Point& b);

}  // namespace examples_test
