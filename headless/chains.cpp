// 2D chains: roots, bones and effectors.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <utility>

#include "headless/scene_editor.h"

namespace headless {

namespace {

using Vector = std::array<double, 3>;

// Scales the vector to length one. Returns false if it is zero or not finite.
bool Normalise(Vector& vector) {
    // The vector is first divided by its largest component, because the squares of very large
    // components overflow and those of very small ones are rounded to zero.
    const double largest =
        std::max({std::fabs(vector[0]), std::fabs(vector[1]), std::fabs(vector[2])});
    if (!(largest > 0.0) || !std::isfinite(largest)) return false;
    for (double& component : vector)
        component /= largest;
    const double length = std::hypot(vector[0], vector[1], vector[2]);
    for (double& component : vector)
        component /= length;
    return std::isfinite(length);
}

double Dot(const Vector& a, const Vector& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

Vector Cross(const Vector& a, const Vector& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

// Subtracts from `vector` its component along `unit`.
void RemoveComponent(Vector& vector, const Vector& unit) {
    const double share = Dot(vector, unit);
    for (std::size_t axis = 0; axis < 3; ++axis)
        vector[axis] -= share * unit[axis];
}

// Makes `vector` perpendicular to `unit` and of length one. Returns false if that is impossible,
// because `vector` is parallel to `unit`, zero or not finite.
bool MakePerpendicular(Vector& vector, const Vector& unit) {
    constexpr double kParallel = 1e-9;
    if (!Normalise(vector)) return false;
    RemoveComponent(vector, unit);
    if (std::hypot(vector[0], vector[1], vector[2]) < kParallel) return false;
    // The remaining vector may be so short that its rounding errors are relatively large. Removing
    // the component once more corrects them.
    if (!Normalise(vector)) return false;
    RemoveComponent(vector, unit);
    return Normalise(vector);
}

// Computes the axes of a bone. The x axis points along `direction`; the z axis is as close to
// `normal` as possible. Returns false if `direction` is zero or not finite.
bool BoneAxes(Vector direction, Vector normal, double axes[3][3]) {
    if (!Normalise(direction)) return false;
    if (!MakePerpendicular(normal, direction)) {
        // This normal cannot be used. The scene axis that is closest to perpendicular to the bone
        // replaces it.
        const auto furthest =
            std::min_element(direction.begin(), direction.end(),
                             [](double a, double b) { return std::fabs(a) < std::fabs(b); });
        normal = {};
        normal[static_cast<std::size_t>(furthest - direction.begin())] = 1.0;
        MakePerpendicular(normal, direction);
    }
    const Vector across = Cross(normal, direction);
    for (std::size_t axis = 0; axis < 3; ++axis) {
        axes[0][axis] = direction[axis];
        axes[1][axis] = across[axis];
        axes[2][axis] = normal[axis];
    }
    return true;
}

Transform SeenFrom(const Transform& global, const Transform& from) {
    return global * Inverse(from);
}

void SetLocal(Object& object, const Transform& seen) {
    const auto [x, y, z] = AnglesOf(seen.axes);
    object.local = {seen.origin[0], seen.origin[1], seen.origin[2], x, y, z};
}

}  // namespace

// The end of the last bone, in scene space and with the orientation of that bone. A chain without
// bones ends at its root.
Transform SceneEditor::ChainEnd(Node& chainRoot) {
    const ChainData& chain = *chainRoot.chainData;
    if (chain.bones.empty()) return Global(chainRoot);
    Node& last = AsNode(*chain.bones.back());
    Transform end;
    end.origin[0] = last.length;
    end = end * Global(last);
    // If the effector's global transform is valid, its position is used. Mostly that is exactly the
    // position that the caller gave. The position computed from the bones has rounding errors.
    if (chain.effector != nullptr && AsNode(*chain.effector).globalValid)
        std::copy_n(AsNode(*chain.effector).global->origin, 3, end.origin);
    return end;
}

// Gives a new bone its length and its transforms. `source` is the bone before the new bone, or the
// chain root. The global transform of `source` must be valid.
void SceneEditor::PlaceBone(Node& bone, Node& source, const double start[3],
                            const Zelk::MATH::CVector3& end) {
    const Vector direction = {end.x - start[0], end.y - start[1], end.z - start[2]};
    bone.length = std::hypot(direction[0], direction[1], direction[2]);
    Transform& global = bone.AllocateGlobal();
    global = *source.global;
    const bool hasAxes = BoneAxes(direction, bone.chainRoot->chainData->normal, global.axes);
    if (hasAxes) SetLocal(bone, SeenFrom(global, *source.global));
    bone.local[0] = source.type == ObjectType::ChainBone ? source.length : 0.0;
    bone.local[1] = bone.local[2] = 0.0;
    std::copy_n(start, 3, global.origin);
    bone.globalValid = true;
}

// Moves the effector to `end`, the new end of the chain. The effector gets the orientation of the
// chain root, whatever orientation it had before.
void SceneEditor::PlaceEffector(Node& chainRoot, const double end[3]) {
    ChainData& chain = *chainRoot.chainData;
    if (chain.effector == nullptr) return;
    Node& effector = AsNode(*chain.effector);
    Invalidate(effector);
    const Transform& root = Global(chainRoot);
    const Transform& source = Global(PoseSource(effector));
    const Transform& around = Global(ParentNode(effector));
    Transform& global = effector.AllocateGlobal();
    global = root;
    const Transform angle = SeenFrom(global, source);
    std::memcpy(chain.effectorAngle.data(), angle.axes, sizeof angle.axes);
    std::copy_n(end, 3, global.origin);
    effector.globalValid = true;

    const Transform seen = SeenFrom(global, around);
    SetLocal(effector, seen);
    // If the chain root is the effector's parent, the exact rotation is zero. The computed rotation
    // has rounding errors, so it is replaced by zero.
    if (effector.parent == &chainRoot) std::fill_n(effector.local.begin() + 3, 3, 0.0);
}

Node* SceneEditor::CreateChain(Node& parent, const Zelk::MATH::CVector3& root,
                               const Zelk::MATH::CVector3& end, const Zelk::MATH::CVector3& normal,
                               const Zelk::CString& name) {
    if (!HasRoomFor(3)) return nullptr;
    const Transform& around = Global(parent);
    std::unique_ptr<Node> newRoot = NewNode(ObjectType::ChainRoot, parent);
    std::unique_ptr<Node> newBone = NewNode(ObjectType::ChainBone, parent);
    std::unique_ptr<Node> newEffector = NewNode(ObjectType::ChainEffector, parent);
    newRoot->chainData = std::make_unique<ChainData>();
    newRoot->chainData->bones.reserve(1);
    newBone->boneIndex = 0;
    for (Node* const node : {newRoot.get(), newBone.get(), newEffector.get()})
        node->AllocateGlobal();
    GiveName(*newRoot, parent, name);

    Node& chainRoot = Install(parent, std::move(newRoot));
    Node& bone = Install(chainRoot, std::move(newBone));
    Node& effector = Install(chainRoot, std::move(newEffector));
    chainRoot.chainRoot = bone.chainRoot = effector.chainRoot = &chainRoot;
    chainRoot.chainData->normal = {normal.x, normal.y, normal.z};
    chainRoot.chainData->bones.push_back(&bone);
    chainRoot.chainData->effector = &effector;

    *chainRoot.global = around;
    const double start[3] = {root.x, root.y, root.z};
    std::copy_n(start, 3, chainRoot.global->origin);
    chainRoot.globalValid = true;
    const Transform seen = SeenFrom(*chainRoot.global, around);
    std::copy_n(seen.origin, 3, chainRoot.local.begin());

    PlaceBone(bone, chainRoot, start, end);
    const double tip[3] = {end.x, end.y, end.z};
    PlaceEffector(chainRoot, tip);
    RefreshEffectors();
    KeepTransformsOf(chainRoot);
    return &chainRoot;
}

Node* SceneEditor::CreateBone(Node& chainRoot, const Zelk::MATH::CVector3& end,
                              const Zelk::CString& name) {
    if (!HasRoomFor(1)) return nullptr;
    ChainData& chain = *chainRoot.chainData;
    Node& source = chain.bones.empty() ? chainRoot : AsNode(*chain.bones.back());
    const Transform start = ChainEnd(chainRoot);
    std::unique_ptr<Node> newBone = NewNode(ObjectType::ChainBone, chainRoot);
    newBone->chainRoot = &chainRoot;
    newBone->boneIndex = static_cast<std::uint32_t>(chain.bones.size());
    newBone->AllocateGlobal();
    // PlaceEffector needs this global transform. Computing it may run out of memory, so it is
    // computed here, before anything has changed.
    if (chain.effector != nullptr) Global(ParentNode(AsNode(*chain.effector)));
    ReserveRoom(chain.bones);
    GiveName(*newBone, chainRoot, name);

    Node& bone = Install(source, std::move(newBone));
    PlaceBone(bone, source, start.origin, end);
    chain.bones.push_back(&bone);
    const double tip[3] = {end.x, end.y, end.z};
    PlaceEffector(chainRoot, tip);
    RefreshEffectors();
    return &bone;
}

}  // namespace headless
