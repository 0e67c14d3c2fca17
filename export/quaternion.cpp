#include "export/quaternion.h"

#include <cmath>

namespace exporters {

// Each of the four cases computes the quaternion times a factor, which is then divided out. It
// computes one component from the diagonal of the matrix. The other three components come from sums
// and differences of two elements each. The code chooses the case in which the component from the
// diagonal is large, because a small one would be an inexact difference of nearly equal numbers.
Quaternion QuaternionOf(const double m[3][3]) {
    const double trace = m[0][0] + m[1][1] + m[2][2];
    Quaternion q;
    if (trace >= 0.0) {
        q = {m[1][2] - m[2][1], m[2][0] - m[0][2], m[0][1] - m[1][0], 1.0 + trace};
    } else if (m[0][0] >= m[1][1] && m[0][0] >= m[2][2]) {
        q = {1.0 + m[0][0] - m[1][1] - m[2][2], m[0][1] + m[1][0], m[2][0] + m[0][2],
             m[1][2] - m[2][1]};
    } else if (m[1][1] >= m[2][2]) {
        q = {m[0][1] + m[1][0], 1.0 - m[0][0] + m[1][1] - m[2][2], m[1][2] + m[2][1],
             m[2][0] - m[0][2]};
    } else {
        q = {m[2][0] + m[0][2], m[1][2] + m[2][1], 1.0 - m[0][0] - m[1][1] + m[2][2],
             m[0][1] - m[1][0]};
    }
    const double length = std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w);
    const double scale = q.w < 0.0 ? -1.0 / length : 1.0 / length;
    return {q.x * scale, q.y * scale, q.z * scale, q.w * scale};
}

Quaternion QuaternionNear(const double axes[3][3], const Quaternion& before) {
    const Quaternion q = QuaternionOf(axes);
    const double cosine = q.x * before.x + q.y * before.y + q.z * before.z + q.w * before.w;
    const double sign = cosine < 0.0 ? -1.0 : 1.0;
    return {sign * q.x, sign * q.y, sign * q.z, sign * q.w};
}

void PutAxes(const Quaternion& q, double axes[3][3]) {
    const double factor = 2.0 / (q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w);
    const double x = q.x * factor;
    const double y = q.y * factor;
    const double z = q.z * factor;
    axes[0][0] = 1.0 - (q.y * y + q.z * z);
    axes[0][1] = q.x * y + q.w * z;
    axes[0][2] = q.x * z - q.w * y;
    axes[1][0] = q.x * y - q.w * z;
    axes[1][1] = 1.0 - (q.x * x + q.z * z);
    axes[1][2] = q.y * z + q.w * x;
    axes[2][0] = q.x * z + q.w * y;
    axes[2][1] = q.y * z - q.w * x;
    axes[2][2] = 1.0 - (q.x * x + q.y * y);
}

}  // namespace exporters
