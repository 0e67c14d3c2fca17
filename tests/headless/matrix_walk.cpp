#include "tests/headless/matrix_walk.h"

#include <cmath>
#include <limits>
#include <numbers>

#include "tests/headless/host_scene.h"

namespace host_test {

using headless::Channel;
using headless::Object;
using headless::ObjectType;

namespace {

Matrix Identity() {
    Matrix matrix{};
    for (std::size_t axis = 0; axis < 4; ++axis)
        matrix[axis][axis] = 1.0;
    return matrix;
}

Matrix Turn(std::size_t axis, double degrees) {
    const double angle = degrees * std::numbers::pi / 180.0;
    const std::size_t next = (axis + 1) % 3;
    const std::size_t last = (axis + 2) % 3;
    Matrix matrix = Identity();
    matrix[next][next] = matrix[last][last] = std::cos(angle);
    matrix[next][last] = std::sin(angle);
    matrix[last][next] = -std::sin(angle);
    return matrix;
}

// Linear between the keys around `frame`, held outside all of them; the last of equal times counts.
double ValueOf(const headless::Keys& keys, double frame) {
    constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();
    const std::vector<double>& times = *keys.times;
    const std::vector<double>& values = *keys.values;
    std::size_t before = kNone;
    std::size_t after = kNone;
    for (std::size_t key = 0; key < times.size(); ++key) {
        if (times[key] <= frame && (before == kNone || times[key] >= times[before])) before = key;
        if (times[key] > frame && (after == kNone || times[key] <= times[after])) after = key;
    }
    if (before == kNone) return values[after];
    if (after == kNone) return values[before];
    const double share = (frame - times[before]) / (times[after] - times[before]);
    return values[before] * (1.0 - share) + values[after] * share;
}

constexpr const wchar_t* kPaths[] = {L".kine.local.posx", L".kine.local.posy", L".kine.local.posz",
                                     L".kine.local.rotx", L".kine.local.roty", L".kine.local.rotz",
                                     L".bone.length"};

}  // namespace

Matrix Multiply(const Matrix& a, const Matrix& b) {
    Matrix product{};
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 4; ++column)
            for (std::size_t inner = 0; inner < 4; ++inner)
                product[row][column] += a[row][inner] * b[inner][column];
    return product;
}

Matrix OfLocal(const std::array<double, 6>& local) {
    Matrix matrix = Multiply(Multiply(Turn(0, local[3]), Turn(1, local[4])), Turn(2, local[5]));
    for (std::size_t axis = 0; axis < 3; ++axis)
        matrix[3][axis] = local[axis];
    return matrix;
}

Matrix OfTransform(const headless::Transform& transform) {
    Matrix matrix = Identity();
    for (std::size_t column = 0; column < 3; ++column) {
        for (std::size_t row = 0; row < 3; ++row)
            matrix[row][column] = transform.axes[row][column];
        matrix[3][column] = transform.origin[column];
    }
    return matrix;
}

double Distance(const Matrix& a, const Matrix& b) {
    double largest = 0.0;
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 4; ++column) {
            const double difference = std::fabs(a[row][column] - b[row][column]);
            if (!(difference <= largest)) largest = std::isnan(difference) ? INFINITY : difference;
        }
    return largest;
}

Matrix Standing(const Object& object) {
    Matrix global = Identity();
    for (const Object* step = &object; step != nullptr; step = step->parent)
        global = Multiply(global, OfLocal(step->local));
    return global;
}

MatrixWalk::MatrixWalk(const Object& model, const headless::ActionSource& motion) : model_(model) {
    for (const headless::ActionItem& item : motion.items)
        items_[Wide(item.Target())] = &item;
}

double MatrixWalk::Value(const Object& object, Channel channel, double frame) const {
    const auto index = static_cast<std::size_t>(channel);
    const auto found = items_.find(Wide(object.name) + kPaths[index]);
    if (found == items_.end() || !found->second->active)
        return channel == Channel::BoneLength ? object.length : object.local[index];
    const headless::ActionItem& item = *found->second;
    return item.IsCurve() ? ValueOf(item.GetCurve().keys, frame) : item.Value();
}

Matrix MatrixWalk::Around(const Object& object, double frame) const {
    if (object.parent != nullptr && &object != &model_) return Global(*object.parent, frame);
    return object.parent == nullptr ? Identity() : Standing(*object.parent);
}

Matrix MatrixWalk::Global(const Object& object, double frame) const {
    if (object.type == ObjectType::ChainEffector && object.chainRoot != nullptr) {
        const Object& last = *object.chainRoot->chainData->bones.back();
        Matrix seen = Identity();
        for (std::size_t entry = 0; entry < 9; ++entry)
            seen[entry / 3][entry % 3] = object.chainRoot->chainData->effectorAngle[entry];
        seen[3][0] = Value(last, Channel::BoneLength, frame);
        return Multiply(seen, Global(last, frame));
    }
    std::array<double, 6> local{};
    for (std::size_t channel = 0; channel < 6; ++channel)
        local[channel] = Value(object, static_cast<Channel>(channel), frame);
    if (object.type == ObjectType::ChainBone) {
        const bool follows = object.parent->type == ObjectType::ChainBone;
        local[0] = follows ? Value(*object.parent, Channel::BoneLength, frame) : 0.0;
        local[1] = local[2] = 0.0;
    }
    if (object.type == ObjectType::ChainRoot) {
        // The first bone's curves are the root's; what has none stays.
        const Object& first = *object.chainData->bones.front();
        for (std::size_t channel = 0; channel < 3; ++channel)
            if (items_.count(Wide(first.name) + kPaths[channel]) != 0)
                local[channel] = Value(first, static_cast<Channel>(channel), frame);
    }
    return Multiply(OfLocal(local), Around(object, frame));
}

}  // namespace host_test
