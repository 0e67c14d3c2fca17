#include "export/body_mesh.h"

#include <algorithm>
#include <cmath>

#include "export/single.h"

namespace exporters {
namespace {

using headless::Transform;

struct Vector {
    double x = 0.0, y = 0.0, z = 0.0;
};
Vector operator+(const Vector& a, const Vector& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
Vector operator-(const Vector& a, const Vector& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
Vector operator*(const Vector& a, double factor) {
    return {a.x * factor, a.y * factor, a.z * factor};
}
Vector Cross(const Vector& a, const Vector& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
double Length(const Vector& a) {
    return std::hypot(a.x, a.y, a.z);
}
Vector Unit(const Vector& a) {
    return a * (1.0 / Length(a));
}

Vector OriginOf(const Transform& transform) {
    return {transform.origin[0], transform.origin[1], transform.origin[2]};
}

// `joint` must be a joint that no bone shape touches. Returns false if it has no parent joint.
// Returns true if it has a parent joint and is part of a chain, or if it is a null whose parent
// object is a chain's effector. Such a joint has the same position as its parent, so it needs no
// marker.
bool IsAtItsParent(const Joint& joint) {
    if (joint.parent == Joint::kNoParent) return false;
    using headless::ObjectType;
    return joint.object->type != ObjectType::Null ||
           joint.object->parent->type == ObjectType::ChainEffector;
}

// These are fractions of a bone's length.
constexpr double kWaist = 0.18;      // from the parent joint to the thickest part of a bone shape
constexpr double kThickness = 0.11;  // the radius of a bone shape at that part
// These are fractions of the skeleton's size.
constexpr double kThinnest = 0.005;  // the smallest radius of a bone shape
constexpr double kThickest = 0.026;  // the largest radius of a bone shape
constexpr double kNoLength = 1e-6;   // up to this distance, two joints count as one point
constexpr double kMarker = 0.012;    // the radius of a marker

class BodyBuilder {
  public:
    BodyBuilder(const std::vector<Joint>& joints, std::span<const Transform> globals)
        : joints_(joints), globals_(globals), hasBoneShape_(joints.size(), false) {
        double most = 0.0;
        for (std::size_t joint = 0; joint < joints.size(); ++joint) {
            const Vector fromFirst = OriginOf(globals[joint]) - OriginOf(globals[0]);
            most = std::max(most, Length(fromFirst));
        }
        // If the first joint is the hips of a figure, size_ is about the figure's height.
        size_ = most > 0.0 ? 2.0 * most : 1.0;
    }

    BodyMesh Build() {
        for (std::size_t joint = 0; joint < joints_.size(); ++joint)
            if (joints_[joint].parent != Joint::kNoParent) AddBone(joints_[joint].parent, joint);
        for (std::size_t joint = 0; joint < joints_.size(); ++joint)
            if (!hasBoneShape_[joint]) AddMarker(joint);
        return std::move(body_);
    }

  private:
    void AddBone(std::size_t from, std::size_t to) {
        const Vector start = OriginOf(globals_[from]);
        const Vector end = OriginOf(globals_[to]);
        const double length = Length(end - start);
        if (!(length > kNoLength * size_)) return;
        hasBoneShape_[from] = hasBoneShape_[to] = true;
        const double radius = std::clamp(length * kThickness, size_ * kThinnest, size_ * kThickest);
        AddShape(from, start, end, kWaist, radius);
    }

    void AddMarker(std::size_t joint) {
        if (IsAtItsParent(joints_[joint])) return;
        const Vector center = OriginOf(globals_[joint]);
        const Vector half{0.0, size_ * kMarker, 0.0};
        AddShape(joint, center - half, center + half, 0.5, size_ * kMarker);
    }

    // Adds two pyramids that share a square base. The base is at the fraction `waist` of the way
    // from `start` to `end`. `radius` is half the diagonal of the base.
    void AddShape(std::size_t joint, const Vector& start, const Vector& end, double waist,
                  double radius) {
        const Vector along = Unit(end - start);
        const bool isUpright = std::abs(along.y) > 0.9;
        const Vector side = Unit(Cross(along, isUpright ? Vector{1, 0, 0} : Vector{0, 1, 0}));
        const Vector other = Cross(along, side);
        const Vector middle = start + (end - start) * waist;
        const Vector corners[4] = {middle + side * radius, middle + other * radius,
                                   middle - side * radius, middle - other * radius};
        for (int corner = 0; corner < 4; ++corner) {
            const Vector& next = corners[(corner + 1) % 4];
            AddTriangle(joint, end, corners[corner], next);
            AddTriangle(joint, start, next, corners[corner]);
        }
    }

    void AddTriangle(std::size_t joint, const Vector& a, const Vector& b, const Vector& c) {
        const Vector normal = Unit(Cross(b - a, c - a));
        for (const Vector& corner : {a, b, c}) {
            body_.indices.push_back(static_cast<std::uint32_t>(body_.positions.size()));
            body_.positions.push_back({Single(corner.x), Single(corner.y), Single(corner.z)});
            body_.normals.push_back({Single(normal.x), Single(normal.y), Single(normal.z)});
            body_.joints.push_back({static_cast<std::uint16_t>(joint), 0, 0, 0});
        }
    }

    const std::vector<Joint>& joints_;
    std::span<const Transform> globals_;
    std::vector<bool> hasBoneShape_;
    double size_;
    BodyMesh body_;
};

}  // namespace

BodyMesh BuildBody(const std::vector<Joint>& joints, std::span<const Transform> globals) {
    return joints.empty() ? BodyMesh() : BodyBuilder(joints, globals).Build();
}

}  // namespace exporters
