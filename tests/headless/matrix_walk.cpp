#include "tests/headless/matrix_walk.h"

#include <limits>

#include "tests/headless/host_scene.h"

namespace host_test {

using headless::Channel;
using headless::Object;
using headless::ObjectType;

namespace {

// Linear between the keys around `frame`, and constant outside all keys. The last of equal times
// counts.
double ValueOf(const headless::Keys& keys, double frame) {
    constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();
    const headless::NumberArray& times = *keys.times;
    const headless::NumberArray& values = *keys.values;
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

Matrix4 OfLocal(const std::array<double, 6>& local) {
    Matrix4 matrix = support::RowRotationOfDegrees(local[3], local[4], local[5]);
    for (std::size_t axis = 0; axis < 3; ++axis)
        matrix[3][axis] = local[axis];
    return matrix;
}

Matrix4 OfTransform(const headless::Transform& transform) {
    Matrix4 matrix = support::kIdentity4;
    for (std::size_t column = 0; column < 3; ++column) {
        for (std::size_t row = 0; row < 3; ++row)
            matrix[row][column] = transform.axes[row][column];
        matrix[3][column] = transform.origin[column];
    }
    return matrix;
}

Matrix4 GlobalOf(const Object& object) {
    Matrix4 global = support::kIdentity4;
    for (const Object* step = &object; step != nullptr; step = step->parent)
        global = global * OfLocal(step->local);
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

Matrix4 MatrixWalk::Around(const Object& object, double frame) const {
    if (object.parent != nullptr && &object != &model_) return Global(*object.parent, frame);
    return object.parent == nullptr ? support::kIdentity4 : GlobalOf(*object.parent);
}

Matrix4 MatrixWalk::Global(const Object& object, double frame) const {
    if (object.type == ObjectType::ChainEffector && object.chainRoot != nullptr) {
        const Object& last = *object.chainRoot->chainData->bones.back();
        Matrix4 seen = support::kIdentity4;
        for (std::size_t entry = 0; entry < 9; ++entry)
            seen[entry / 3][entry % 3] = object.chainRoot->chainData->effectorAngle[entry];
        seen[3][0] = Value(last, Channel::BoneLength, frame);
        return seen * Global(last, frame);
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
        // Curves for the position of the first bone move the root.
        const Object& first = *object.chainData->bones.front();
        for (std::size_t channel = 0; channel < 3; ++channel)
            if (items_.count(Wide(first.name) + kPaths[channel]) != 0)
                local[channel] = Value(first, static_cast<Channel>(channel), frame);
    }
    return OfLocal(local) * Around(object, frame);
}

}  // namespace host_test
