#include "survey/rotation_arcs.h"

#include <cmath>

#include "math/angles.h"

namespace survey {
namespace {

using Lanes = ArcBlock::Lanes;
using Matrices = std::array<Lanes, 9>;  // m[3 * row + column][lane]

void SetIdentity(Matrices& m) {
    for (std::size_t i = 0; i < m.size(); ++i)
        m[i].fill(i % 4 == 0 ? 1.0 : 0.0);
}

// Replaces each matrix by its product with the rotation about `axis`.
void Turn(Matrices& m, std::size_t axis, const Lanes& sine, const Lanes& cosine) {
    for (std::size_t row = 0; row < 9; row += 3) {
        Lanes& from = m[row + (axis + 1) % 3];
        Lanes& to = m[row + (axis + 2) % 3];
        for (std::size_t lane = 0; lane < kArcs; ++lane) {
            const double a = from[lane];
            const double b = to[lane];
            from[lane] = a * cosine[lane] + b * sine[lane];
            to[lane] = b * cosine[lane] - a * sine[lane];
        }
    }
}

}  // namespace

void ComputeArcs(const std::array<std::size_t, 3>& axes, std::size_t count, std::size_t lanes,
                 ArcBlock& block) {
    Matrices m;
    SetIdentity(m);
    Lanes sine;
    Lanes cosine;
    for (std::size_t i = 0; i < count; ++i) {
        sine.fill(0.0);
        cosine.fill(1.0);
        for (std::size_t lane = 0; lane < lanes; ++lane) {
            const double angle = block.listed[i][lane] * math::kRadiansPerDegree;
            sine[lane] = std::sin(angle);
            cosine[lane] = std::cos(angle);
        }
        Turn(m, axes[i], sine, cosine);
    }
    Lanes arcSine;
    Lanes arcCosine;
    for (std::size_t lane = 0; lane < kArcs; ++lane) {
        const double length = std::sqrt(m[0][lane] * m[0][lane] + m[3][lane] * m[3][lane]);
        const double sinZ = m[3][lane] / length;
        const double cosZ = m[0][lane] / length;
        block.cosine[lane] = length;
        arcSine[lane] = sinZ * m[2][lane] - cosZ * m[5][lane];
        arcCosine[lane] = cosZ * m[4][lane] - sinZ * m[1][lane];
    }
    for (std::size_t lane = 0; lane < lanes; ++lane) {
        block.angles[0][lane] = std::atan2(arcSine[lane], arcCosine[lane]);
        block.angles[1][lane] = std::atan2(-m[6][lane], block.cosine[lane]);
        block.angles[2][lane] = std::atan2(m[3][lane], m[0][lane]);
    }
}

}  // namespace survey
