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

// The vector at length one; false for one that points nowhere.
bool Normalise(Vector& vector) {
    // Scaled first: the squares of very long and very short vectors are no numbers any more.
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

void TakeOut(Vector& vector, const Vector& unit) {
    const double share = Dot(vector, unit);
    for (std::size_t axis = 0; axis < 3; ++axis)
        vector[axis] -= share * unit[axis];
}

// `vector` made perpendicular to `unit` and of length one; false where the two are parallel.
bool MakePerpendicular(Vector& vector, const Vector& unit) {
    constexpr double kParallel = 1e-9;
    if (!Normalise(vector)) return false;
    TakeOut(vector, unit);
    if (std::hypot(vector[0], vector[1], vector[2]) < kParallel) return false;
    // What is left may be short, and rounding large against it: the second time puts that right.
    if (!Normalise(vector)) return false;
    TakeOut(vector, unit);
    return Normalise(vector);
}

// The axes of a bone along `direction`, or false where that points nowhere.
bool BoneAxes(Vector direction, Vector normal, double axes[3][3]) {
    if (!Normalise(direction)) return false;
    if (!MakePerpendicular(normal, direction)) {
        // The scene axis that is furthest from the bone.
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

// With the orientation of the last bone.
Transform SceneEditor::ChainEnd(Node& chainRoot) {
    const ChainData& chain = *chainRoot.chainData;
    if (chain.bones.empty()) return Global(chainRoot);
    Node& last = AsNode(*chain.bones.back());
    Transform end;
    end.origin[0] = last.length;
    end = end * Global(last);
    // Of the effector the place is known as it was given, without the way along the bones.
    if (chain.effector != nullptr && AsNode(*chain.effector).globalValid)
        std::copy_n(AsNode(*chain.effector).global->origin, 3, end.origin);
    return end;
}

// `source` is the bone before or the chain root, and its scene transform is valid.
void SceneEditor::PlaceBone(Node& bone, Node& source, const double start[3],
                            const Zelk::MATH::CVector3& end) {
    const Vector way = {end.x - start[0], end.y - start[1], end.z - start[2]};
    bone.length = std::hypot(way[0], way[1], way[2]);
    Transform& global = bone.MakeGlobal();
    global = *source.global;
    const bool turned = BoneAxes(way, bone.chainRoot->chainData->normal, global.axes);
    if (turned) SetLocal(bone, SeenFrom(global, *source.global));
    bone.local[0] = source.type == ObjectType::ChainBone ? source.length : 0.0;
    bone.local[1] = bone.local[2] = 0.0;
    std::copy_n(start, 3, global.origin);
    bone.globalValid = true;
}

// After a bone was added: the effector takes the chain root's orientation, whatever it had.
void SceneEditor::PlaceEffector(Node& chainRoot, const double end[3]) {
    ChainData& chain = *chainRoot.chainData;
    if (chain.effector == nullptr) return;
    Node& effector = AsNode(*chain.effector);
    Invalidate(effector);
    const Transform& root = Global(chainRoot);
    const Transform& source = Global(PoseSource(effector));
    const Transform& around = Global(ParentNode(effector));
    Transform& global = effector.MakeGlobal();
    global = root;
    const Transform angle = SeenFrom(global, source);
    std::memcpy(chain.effectorAngle.data(), angle.axes, sizeof angle.axes);
    std::copy_n(end, 3, global.origin);
    effector.globalValid = true;

    const Transform seen = SeenFrom(global, around);
    SetLocal(effector, seen);
    // Turned like the root exactly, not within rounding.
    if (effector.parent == &chainRoot) std::fill_n(effector.local.begin() + 3, 3, 0.0);
}

Node* SceneEditor::MakeChain(Node& parent, const Zelk::MATH::CVector3& root,
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
        node->MakeGlobal();
    GiveName(*newRoot, parent, name);

    Node& chainRoot = Install(parent, std::move(newRoot));
    Node& bone = Install(chainRoot, std::move(newBone));
    Node& effector = Install(chainRoot, std::move(newEffector));
    chainRoot.chainRoot = bone.chainRoot = effector.chainRoot = &chainRoot;
    chainRoot.chainData->normal = {normal.x, normal.y, normal.z};
    chainRoot.chainData->bones.push_back(&bone);
    chainRoot.chainData->effector = &effector;

    *chainRoot.global = around;
    const double place[3] = {root.x, root.y, root.z};
    std::copy_n(place, 3, chainRoot.global->origin);
    chainRoot.globalValid = true;
    const Transform seen = SeenFrom(*chainRoot.global, around);
    std::copy_n(seen.origin, 3, chainRoot.local.begin());

    PlaceBone(bone, chainRoot, place, end);
    const double tip[3] = {end.x, end.y, end.z};
    PlaceEffector(chainRoot, tip);
    RefreshEffectors();
    KeepTransformsOf(chainRoot);
    return &chainRoot;
}

Node* SceneEditor::MakeBone(Node& chainRoot, const Zelk::MATH::CVector3& end,
                            const Zelk::CString& name) {
    if (!HasRoomFor(1)) return nullptr;
    ChainData& chain = *chainRoot.chainData;
    Node& source = chain.bones.empty() ? chainRoot : AsNode(*chain.bones.back());
    const Transform start = ChainEnd(chainRoot);
    std::unique_ptr<Node> newBone = NewNode(ObjectType::ChainBone, chainRoot);
    newBone->chainRoot = &chainRoot;
    newBone->boneIndex = static_cast<std::uint32_t>(chain.bones.size());
    newBone->MakeGlobal();
    // What the effector will be placed by, while nothing has changed.
    if (chain.effector != nullptr) Global(ParentNode(AsNode(*chain.effector)));
    MakeRoom(chain.bones);
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
