#include "survey/acclaim_figure.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "math/rotation_math.h"
#include "survey/acclaim_rotations.h"
#include "survey/codes.h"
#include "text/number_text.h"

namespace survey {
namespace {

constexpr std::size_t kMostPoses = 500;  // a sample with this many poses is thinned out
constexpr std::size_t kBonesListed = 8;  // the most bones that a message names
// A value may exceed its limit by this much because of rounding. It is in the unit of the limit.
constexpr double kLimitTolerance = 1e-9;

using Matrix = std::array<std::array<double, 4>, 4>;

double (*Raw(Matrix& matrix))[4] {
    return reinterpret_cast<double(*)[4]>(matrix.data());
}
const double (*Raw(const Matrix& matrix))[4] {
    return reinterpret_cast<const double(*)[4]>(matrix.data());
}

Matrix Product(const Matrix& a, const Matrix& b) {
    Matrix product;
    MatrixMult(Raw(a), Raw(b), Raw(product));
    return product;
}

Matrix Identity() {
    Matrix matrix;
    MatrixIdentity(Raw(matrix));
    return matrix;
}

Matrix RotationAbout(std::size_t axis, double angle) {
    Matrix matrix;
    if (axis == 0) MatrixRotationX(Raw(matrix), angle);
    if (axis == 1) MatrixRotationY(Raw(matrix), angle);
    if (axis == 2) MatrixRotationZ(Raw(matrix), angle);
    return matrix;
}

}  // namespace

AcclaimFigure::AcclaimFigure(const AsfSkeleton& skeleton, double factor)
    : skeleton_(skeleton),
      factor_(factor),
      states_(skeleton.bones.size()),
      ends_(skeleton.bones.size()) {
    const double unit = RadiansPerUnit(skeleton.degrees);
    for (const AsfBone& bone : skeleton.bones) {
        const double x = bone.axis[0].value * unit;
        const double y = bone.axis[1].value * unit;
        const double z = bone.axis[2].value * unit;
        MatrixRotationXYZ(Raw(axes_.emplace_back()), x, y, z);
        MatrixRotationZYX(Raw(inverses_.emplace_back()), -x, -y, -z);
    }
}

void AcclaimFigure::SetToRest() {
    for (std::size_t bone = 0; bone < states_.size(); ++bone)
        states_[bone] = {{}, Identity(), skeleton_.bones[bone].length.value};
    for (std::size_t axis = 0; axis < 3; ++axis)
        states_[0].position[axis] = skeleton_.position[axis].value;
}

Extent AcclaimFigure::RestExtent() {
    SetToRest();
    return Walk();
}

Extent AcclaimFigure::FrameExtent(const AmcValues& values, bool degrees) {
    SetToRest();
    for (std::uint32_t bone = 0; bone < skeleton_.bones.size(); ++bone)
        if (values.WasSeen(bone)) ApplyValues(bone, values, RadiansPerUnit(degrees));
    return Walk();
}

// Applies the bone's values in the frame to its state. The rotations act in the order in which the
// bone lists its dofs.
void AcclaimFigure::ApplyValues(std::uint32_t index, const AmcValues& values,
                                double radiansPerUnit) {
    const AsfBone& bone = skeleton_.bones[index];
    State& state = states_[index];
    Matrix rotation = Identity();
    const auto numbers = values.Of(index);
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const Dof dof = bone.dof[i];
        if (dof == Dof::Length)
            state.length = numbers[i].value;
        else if (IsRotation(dof))
            rotation =
                Product(rotation, RotationAbout(AxisOf(dof), numbers[i].value * radiansPerUnit));
        else if (index == 0)
            state.position[AxisOf(dof)] = numbers[i].value;
    }
    state.rotation = Product(Product(inverses_[index], rotation), axes_[index]);
}

Extent AcclaimFigure::Walk() {
    Extent extent;
    for (const std::uint32_t index : skeleton_.order) {
        const AsfBone& bone = skeleton_.bones[index];
        State& state = states_[index];
        if (bone.parent != kNoBone) {
            state.position = ends_[bone.parent];
            state.rotation = Product(state.rotation, states_[bone.parent].rotation);
        } else {
            for (double& component : state.position)
                component *= factor_;
        }
        ends_[index] = state.position;
        for (std::size_t column = 0; column < 3; ++column)
            for (std::size_t row = 0; row < 3; ++row)
                ends_[index][column] += bone.direction[row].value * state.length * factor_ *
                                        state.rotation[row][column];
        extent.Include(state.position.data());
        extent.Include(ends_[index].data());
    }
    return extent;
}

void PoseSample::Add(const Extent& extent) {
    extents_.push_back(extent);
    if (extents_.size() < kMostPoses) return;
    for (std::size_t i = 0; 2 * i < extents_.size(); ++i)
        extents_[i] = extents_[2 * i];
    extents_.resize((extents_.size() + 1) / 2);
    stride_ *= 2;
}

void PoseSample::AddTo(FigureShape& shape) const {
    for (const Extent& extent : extents_)
        shape.AddFrame(extent);
}

LimitWatch::LimitWatch(const AsfSkeleton& skeleton)
    : skeleton_(skeleton), excesses_(skeleton.bones.size()) {}

void LimitWatch::Add(const AmcValues& values, bool degrees) {
    const double scale = RadiansPerUnit(degrees) / RadiansPerUnit(skeleton_.degrees);
    for (std::uint32_t index = 0; index < skeleton_.bones.size(); ++index) {
        const AsfBone& bone = skeleton_.bones[index];
        if (bone.limits.empty() || !values.WasSeen(index)) continue;
        double worst = 0.0;
        const auto numbers = values.Of(index);
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            if (IsTranslation(bone.dof[i])) continue;
            const double value =
                IsRotation(bone.dof[i]) ? numbers[i].value * scale : numbers[i].value;
            worst = std::max(
                {worst, bone.limits[2 * i].value - value, value - bone.limits[2 * i + 1].value});
        }
        if (worst <= kLimitTolerance) continue;
        ++excesses_[index].frames;
        excesses_[index].worst = std::max(excesses_[index].worst, worst);
    }
}

void LimitWatch::Report(FindingList& findings) const {
    std::string bones;
    std::string first;
    std::size_t count = 0;
    for (std::size_t index = 0; index < excesses_.size(); ++index) {
        const Excess& excess = excesses_[index];
        if (excess.frames == 0) continue;
        const std::string& name = skeleton_.bones[index].name;
        if (count++ == 0) first = name;
        if (count > kBonesListed) continue;
        const double rounded = std::round(excess.worst * 1000.0) / 1000.0;
        bones += (count > 1 ? ", \"" : "\"") + name + "\" in " + std::to_string(excess.frames) +
                 (excess.frames == 1 ? " frame" : " frames") + " by at most " +
                 text::NumberText(rounded);
    }
    if (count == 0) return;
    if (count > kBonesListed) bones += " and " + std::to_string(count - kBonesListed) + " more";
    findings.Add({codes::kLimitsExceeded, Severity::Note, nullptr,
                  "values are beyond their limits: " + bones + "; --limits holds them there",
                  first});
    findings.AddAgain(codes::kLimitsExceeded, Severity::Note, count - 1);
}

}  // namespace survey
