#include "export/quaternion_run.h"

#include <cmath>

namespace exporters {
namespace {

using math::kPoseLanes;
using math::PoseLanes;
using Value = QuaternionRun::Value;

Value ValueOf(const PoseLanes& pose, std::size_t lane) {
    return {pose.rotation[0][lane], pose.rotation[1][lane], pose.rotation[2][lane],
            pose.rotation[3][lane]};
}

double Cosine(const Value& a, const Value& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2] + a[3] * b[3];
}

// Returns -1 if the negated quaternion is the one with w >= 0, otherwise 1. If w is 0, it is the
// one whose component with the largest magnitude is above 0.
double SignOf(const Value& q) {
    if (q[3] != 0.0) return q[3] < 0.0 ? -1.0 : 1.0;
    double largest = q[0];
    for (std::size_t part = 1; part < 3; ++part)
        if (std::abs(q[part]) > std::abs(largest)) largest = q[part];
    return largest < 0.0 ? -1.0 : 1.0;
}

// This loop is a function of its own so that the compiler vectorises it.
void Multiply(PoseLanes& pose, const double (&signs)[kPoseLanes]) {
    for (auto& lanes : pose.rotation)
        for (std::size_t lane = 0; lane < kPoseLanes; ++lane)
            lanes[lane] *= signs[lane];
}

}  // namespace

void QuaternionRun::Continue(PoseLanes& pose, std::size_t count) {
    double cosines[kPoseLanes];
    double signs[kPoseLanes];
    math::CompareNeighbours(pose, cosines);
    const Value first = ValueOf(pose, 0);
    if (hasLast_) cosines[0] = Cosine(last_, first);
    double sign = hasLast_ ? 1.0 : SignOf(first);
    double lowest = sign;
    for (std::size_t lane = 0; lane < count; ++lane) {
        if (cosines[lane] < 0.0) sign = -sign;
        if (cosines[lane] == 0.0) {
            sign = SignOf(ValueOf(pose, lane));
            // What came before the run does not count; Join knows the frame before it.
            const bool isFirst = frames_ + lane == 0;
            if (!isDecided_ && !isFirst) dependent_ = frames_ + lane;
            isDecided_ = isDecided_ || !isFirst;
        }
        signs[lane] = sign;
        lowest = sign < lowest ? sign : lowest;
    }
    if (lowest < 0.0) {
        for (std::size_t lane = count; lane < kPoseLanes; ++lane)
            signs[lane] = 1.0;
        Multiply(pose, signs);
    }
    if (frames_ == 0) first_ = ValueOf(pose, 0);
    last_ = ValueOf(pose, count - 1);
    hasLast_ = true;
    frames_ += count;
    if (!isDecided_) dependent_ = frames_;
}

std::size_t QuaternionRun::Follow(const QuaternionRun& before) {
    if (!before.hasLast_ || Cosine(before.last_, first_) >= 0.0) return 0;
    if (!isDecided_)
        for (double& part : last_)
            part = -part;
    return dependent_;
}

std::vector<std::size_t> QuaternionRun::Join(std::span<const QuaternionRun> runs) {
    std::vector<std::size_t> negated(runs.size(), 0);
    QuaternionRun before = runs.empty() ? QuaternionRun() : runs.front();
    for (std::size_t index = 1; index < runs.size(); ++index) {
        QuaternionRun run = runs[index];
        negated[index] = run.Follow(before);
        before = run;
    }
    return negated;
}

}  // namespace exporters
