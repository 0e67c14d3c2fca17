#include "examples/rotation.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace examples {
namespace {

constexpr double kRadians = std::numbers::pi / 180;

double Asin(double value) {
    // Rounding errors can make an entry of a rotation matrix slightly larger than 1 or smaller
    // than -1.
    return std::asin(std::clamp(value, -1.0, 1.0));
}

}  // namespace

Vec3 operator+(const Vec3& a, const Vec3& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
Vec3 operator-(const Vec3& a, const Vec3& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
Vec3 operator*(double factor, const Vec3& v) {
    return {factor * v.x, factor * v.y, factor * v.z};
}
double Dot(const Vec3& a, const Vec3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
Vec3 Cross(const Vec3& a, const Vec3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
double Length(const Vec3& v) {
    return std::sqrt(Dot(v, v));
}
Vec3 Normalized(const Vec3& v) {
    return (1 / Length(v)) * v;
}

Vec3 operator*(const Rotation& r, const Vec3& v) {
    return v.x * r.x + v.y * r.y + v.z * r.z;
}
Rotation operator*(const Rotation& a, const Rotation& b) {
    return {a * b.x, a * b.y, a * b.z};
}
Rotation Inverse(const Rotation& r) {
    return {{r.x.x, r.y.x, r.z.x}, {r.x.y, r.y.y, r.z.y}, {r.x.z, r.y.z, r.z.z}};
}

Rotation TurnX(double degrees) {
    return TurnAbout({1, 0, 0}, degrees);
}
Rotation TurnY(double degrees) {
    return TurnAbout({0, 1, 0}, degrees);
}
Rotation TurnZ(double degrees) {
    return TurnAbout({0, 0, 1}, degrees);
}

Rotation TurnAbout(const Vec3& axis, double degrees) {
    const double c = std::cos(degrees * kRadians);
    const double s = std::sin(degrees * kRadians);
    const auto turned = [&](const Vec3& v) {
        return c * v + s * Cross(axis, v) + ((1 - c) * Dot(axis, v)) * axis;
    };
    return {turned({1, 0, 0}), turned({0, 1, 0}), turned({0, 0, 1})};
}

Rotation TurnXyz(const Vec3& degrees) {
    return TurnZ(degrees.z) * TurnY(degrees.y) * TurnX(degrees.x);
}

Vec3 AnglesXyz(const Rotation& r) {
    return {std::atan2(r.y.z, r.z.z) / kRadians, Asin(-r.x.z) / kRadians,
            std::atan2(r.x.y, r.x.x) / kRadians};
}

Vec3 AnglesZxy(const Rotation& r) {
    return {Asin(r.y.z) / kRadians, std::atan2(-r.x.z, r.z.z) / kRadians,
            std::atan2(-r.y.x, r.y.y) / kRadians};
}

}  // namespace examples
