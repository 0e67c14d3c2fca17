// The transforms of objects. A global transform is computed when it is needed, and kept until
// something that it depends on changes. The local transforms of effectors are updated at the end of
// each operation.
#include <algorithm>
#include <cstring>

#include "headless/chain_end.h"
#include "headless/scene_editor.h"

namespace headless {

namespace {

bool IsChainEffector(const Object& object) {
    return object.type == ObjectType::ChainEffector && object.chainRoot != nullptr;
}

// Whether an effector has been moved out of its chain. If it has not, its local transform depends
// only on the bones between its parent and the effector.
bool IsOutsideChain(const Object& effector) {
    const Object* const parent = effector.parent;
    if (parent == nullptr) return true;
    if (parent == effector.chainRoot) return false;
    return parent->type != ObjectType::ChainBone || parent->chainRoot != effector.chainRoot;
}

bool SameBits(double a, double b) {
    return std::memcmp(&a, &b, sizeof(double)) == 0;
}

Object* EffectorOf(const Object& chainElement) {
    return chainElement.chainRoot->chainData->effector;
}

// The effector of the chain that ends with `object`; null if there is none.
Object* EffectorAtEndOf(const Object& object) {
    if (object.chainRoot == nullptr || object.type == ObjectType::ChainEffector) return nullptr;
    const ChainData& chain = *object.chainRoot->chainData;
    const Object* const last = chain.bones.empty() ? object.chainRoot : chain.bones.back();
    return last == &object ? chain.effector : nullptr;
}

// Whether an element of a chain has a child that does not belong to that chain.
bool HasOtherChildren(const Object& element) {
    for (const Object* child = element.firstChild; child != nullptr; child = child->nextSibling)
        if (child->chainRoot != element.chainRoot) return true;
    return false;
}

}  // namespace

// The global transform of an effector is computed from that of the end of its chain. The global
// transform of any other object is computed from that of its parent. Returns this end or parent.
Node& SceneEditor::PoseSource(const Node& object) const {
    const Object* const end = EndOfChain(object);
    if (end == nullptr) return ParentNode(object);
    // EndOfChain returns a const object, but the editor may change every object of its scene.
    return AsNode(const_cast<Object&>(*end));
}

Transform SceneEditor::SeenFromPoseSource(const Node& object) const {
    const Object* const end = EndOfChain(object);
    // A chain without bones ends with its root, whose length is 0.
    return end == nullptr ? FromLocal(object.local) : EffectorSeenFromEnd(object, end->length);
}

const Transform& SceneEditor::Global(Node& object) {
    Node* path = nullptr;
    for (Node* node = &object; !node->globalValid; node = &PoseSource(*node)) {
        node->walkNext = path;
        path = node;
    }
    for (; path != nullptr; path = path->walkNext) {
        path->AllocateGlobal() = SeenFromPoseSource(*path) * *PoseSource(*path).global;
        path->globalValid = true;
    }
    return *object.global;
}

// Marks the global transform of the object, and all transforms that depend on it, as invalid. If
// the object's global transform is invalid already, so are all transforms that depend on it.
void SceneEditor::Invalidate(Node& object) noexcept {
    if (!object.globalValid) return;
    object.walkNext = nullptr;
    object.globalValid = false;
    Node* waiting = &object;
    const auto visit = [&waiting](Node& node) {
        if (!node.globalValid) return;
        node.globalValid = false;
        node.walkNext = waiting;
        waiting = &node;
    };
    while (waiting != nullptr) {
        Node& node = *waiting;
        waiting = node.walkNext;
        for (Object* child = node.firstChild; child != nullptr; child = child->nextSibling) {
            if (!IsChainEffector(*child))
                visit(AsNode(*child));
            else if (IsOutsideChain(*child))
                MarkEffector(child);
        }
        if (Object* const effector = EffectorAtEndOf(node)) {
            visit(AsNode(*effector));
            if (IsOutsideChain(*effector)) MarkEffector(effector);
        }
    }
}

// In a large scene most chains have no other objects under them. After such a chain has been built,
// its global transforms are not needed any more. So only the global transforms of the latest chains
// are kept. Older chains can still grow; their end is then computed from the local transforms, with
// rounding errors.
void SceneEditor::KeepTransformsOf(const Node& chainRoot) noexcept {
    std::uint32_t& entry = records_.latestChains[records_.nextLatestChain];
    Node* const oldest = records_.FindNode(entry);
    if (oldest != nullptr) DropTransforms(*oldest);
    entry = chainRoot.id;
    records_.nextLatestChain = (records_.nextLatestChain + 1) % records_.latestChains.size();
}

// Drops the global transforms of all elements of the chain. Does nothing if the chain's effector is
// outside the chain, or if an object that is not in the chain is under one of its elements. In
// these cases a global transform that stays valid may have been computed from those of the chain.
void SceneEditor::DropTransforms(Node& chainRoot) noexcept {
    const ChainData& chain = *chainRoot.chainData;
    Object* const effector = chain.effector;
    if (HasOtherChildren(chainRoot)) return;
    if (effector != nullptr && (IsOutsideChain(*effector) || HasOtherChildren(*effector))) return;
    if (std::any_of(chain.bones.begin(), chain.bones.end(),
                    [](const Object* bone) { return HasOtherChildren(*bone); }))
        return;
    const auto drop = [](Object& element) {
        AsNode(element).globalValid = false;
        AsNode(element).global.reset();
    };
    drop(chainRoot);
    for (Object* const bone : chain.bones)
        drop(*bone);
    if (effector != nullptr) drop(*effector);
}

void SceneEditor::MarkEffector(Object* effector) noexcept {
    if (effector == nullptr) return;
    Node& node = AsNode(*effector);
    if (node.effectorDirty) return;
    node.effectorDirty = true;
    node.dirtyNext = records_.dirtyEffectors;
    records_.dirtyEffectors = &node;
}

void SceneEditor::RefreshEffectors() {
    while (records_.dirtyEffectors != nullptr) {
        Node& effector = *records_.dirtyEffectors;
        // The effector is refreshed before it is removed from the list. So it stays in the list if
        // memory runs out.
        RefreshEffector(effector);
        records_.dirtyEffectors = effector.dirtyNext;
        effector.effectorDirty = false;
    }
}

// If an effector is inside its chain, its local transform is computed from the bones alone. So the
// local transform does not change when the whole chain is moved. For an effector outside its chain,
// this function makes the global transforms of the effector and of its parent valid, so that
// Invalidate finds the effector when either of them changes.
void SceneEditor::RefreshEffector(Node& effector) {
    Transform seen;
    if (IsOutsideChain(effector)) {
        seen = Global(effector) * Inverse(Global(ParentNode(effector)));
    } else {
        seen = SeenFromPoseSource(effector);
        const std::vector<Object*>& bones = effector.chainRoot->chainData->bones;
        for (std::size_t index = bones.size(); index-- > 0 && bones[index] != effector.parent;)
            seen = seen * FromLocal(bones[index]->local);
    }
    const auto [x, y, z] = AnglesOf(seen.axes);
    effector.local = {seen.origin[0], seen.origin[1], seen.origin[2], x, y, z};
}

double SceneEditor::ValueOf(const Node& object, Channel channel) const {
    return channel == Channel::BoneLength ? object.length
                                          : object.local[static_cast<std::size_t>(channel)];
}

void SceneEditor::ChangeChannel(Node& object, Channel channel, double value) {
    if (SameBits(ValueOf(object, channel), value)) return;
    if (channel != Channel::BoneLength) {
        object.local[static_cast<std::size_t>(channel)] = value;
        Invalidate(object);
        if (object.type == ObjectType::ChainBone) MarkEffector(EffectorOf(object));
        return;
    }
    object.length = value;
    Object* const effector = EffectorOf(object);
    const std::vector<Object*>& bones = object.chainRoot->chainData->bones;
    const std::size_t after = std::size_t{object.boneIndex} + 1;
    if (after < bones.size()) {
        Node& next = AsNode(*bones[after]);
        next.local[0] = value;
        Invalidate(next);
    } else if (effector != nullptr) {
        Invalidate(AsNode(*effector));
    }
    MarkEffector(effector);
}

Zelk::CStatus SceneEditor::PutValue(Node& object, Channel channel, double value) {
    const bool isBone = object.type == ObjectType::ChainBone;
    const bool isPosition = channel < Channel::RotX;
    if (IsChainEffector(object) || (isBone && isPosition)) return Zelk::status::kInvalidArgument;
    if (channel == Channel::BoneLength && !isBone) return Zelk::status::kInvalidArgument;
    ChangeChannel(object, channel, value);
    RefreshEffectors();
    return Zelk::status::kOk;
}

Zelk::CStatus SceneEditor::PutTranslation(Node& object, const Zelk::MATH::CVector3& translation) {
    if (object.type == ObjectType::ChainBone || IsChainEffector(object))
        return Zelk::status::kInvalidArgument;
    const std::array<double, kKinematicChannelCount> local = {
        translation.x, translation.y, translation.z, 0.0, 0.0, 0.0};
    for (std::size_t index = 0; index < local.size(); ++index)
        ChangeChannel(object, static_cast<Channel>(index), local[index]);
    RefreshEffectors();
    return Zelk::status::kOk;
}

}  // namespace headless
