// Where objects stand. Scene transforms are worked out when somebody asks and kept until something
// they depend on changes; the local states of effectors follow at the end of the operation.
#include <algorithm>
#include <cstring>

#include "headless/chain_end.h"
#include "headless/scene_editor.h"

namespace headless {

namespace {

bool IsChainEffector(const Object& object) {
    return object.type == ObjectType::ChainEffector && object.chainRoot != nullptr;
}

// Whether an effector hangs somewhere outside its chain: only then is its local state more than the
// bones between its parent and itself.
bool HangsOutside(const Object& effector) {
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

// The effector that stands at the end of `object` itself, or null.
Object* EffectorAtEndOf(const Object& object) {
    if (object.chainRoot == nullptr || object.type == ObjectType::ChainEffector) return nullptr;
    const ChainData& chain = *object.chainRoot->chainData;
    const Object* const last = chain.bones.empty() ? object.chainRoot : chain.bones.back();
    return last == &object ? chain.effector : nullptr;
}

// Whether anything but the next of its own chain hangs under an element of a chain.
bool CarriesOthers(const Object& element) {
    for (const Object* child = element.firstChild; child != nullptr; child = child->nextSibling)
        if (child->chainRoot != element.chainRoot) return true;
    return false;
}

}  // namespace

// The object that another one's scene transform is worked out from: its parent, but of an effector
// the last bone of its chain.
Node& SceneEditor::PoseSource(const Node& object) const {
    const Object* const end = EndOfChain(object);
    if (end == nullptr) return ParentNode(object);
    // The editor may change every object of its scene.
    return AsNode(const_cast<Object&>(*end));
}

Transform SceneEditor::SeenFromPoseSource(const Node& object) const {
    const Object* const end = EndOfChain(object);
    // A chain root, the end of a chain without bones, has the length 0.
    return end == nullptr ? FromLocal(object.local) : EffectorSeenFromEnd(object, end->length);
}

const Transform& SceneEditor::Global(Node& object) {
    Node* way = nullptr;
    for (Node* node = &object; !node->globalValid; node = &PoseSource(*node)) {
        node->walkNext = way;
        way = node;
    }
    for (; way != nullptr; way = way->walkNext) {
        way->MakeGlobal() = SeenFromPoseSource(*way) * *PoseSource(*way).global;
        way->globalValid = true;
    }
    return *object.global;
}

// What depends on an invalid transform is invalid already, so a second call costs nothing.
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
            else if (HangsOutside(*child))
                MarkEffector(child);
        }
        if (Object* const effector = EffectorAtEndOf(node)) {
            visit(AsNode(*effector));
            if (HangsOutside(*effector)) MarkEffector(effector);
        }
    }
}

// A large scene has mostly chains that nothing hangs under, whose scene transforms nobody asks for
// again once they are built: those of the latest are kept. To others a bone can be added still,
// from where their effectors are by the states, which is where they were put within rounding.
void SceneEditor::KeepTransformsOf(const Node& chainRoot) noexcept {
    std::uint32_t& place = records_.latestChains[records_.nextLatestChain];
    Node* const oldest = records_.FindNode(place);
    if (oldest != nullptr) DropTransforms(*oldest);
    place = chainRoot.id;
    records_.nextLatestChain = (records_.nextLatestChain + 1) % records_.latestChains.size();
}

// Unless something else may have been worked out from them: what hangs under an element of the
// chain, or its effector elsewhere.
void SceneEditor::DropTransforms(Node& chainRoot) noexcept {
    const ChainData& chain = *chainRoot.chainData;
    Object* const effector = chain.effector;
    if (CarriesOthers(chainRoot)) return;
    if (effector != nullptr && (HangsOutside(*effector) || CarriesOthers(*effector))) return;
    if (std::any_of(chain.bones.begin(), chain.bones.end(),
                    [](const Object* bone) { return CarriesOthers(*bone); }))
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
        // First, so that one for which there is no memory stays in the list.
        RefreshEffector(effector);
        records_.dirtyEffectors = effector.dirtyNext;
        effector.effectorDirty = false;
    }
}

// Inside its own chain an effector is worked out along the bones alone, so that it neither moves
// nor costs anything when the chain is moved as a whole. Outside it, its own and its parent's scene
// transform are both valid from here on: a change of either finds the way back.
void SceneEditor::RefreshEffector(Node& effector) {
    Transform seen;
    if (HangsOutside(effector)) {
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
