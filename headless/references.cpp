// Resolves references, and finds the names and parents of what they refer to.
#include <string>

#include "headless/scene_editor.h"
#include "headless/text.h"

namespace headless {

namespace {

using Kind = Referent::Kind;

Referent ResolveObject(Node& node, std::uint32_t partNumber) {
    Referent found;
    found.object = &node;
    if (partNumber == part::kSelf) {
        found.kind = Kind::Object;
    } else if (partNumber == part::kKinematics) {
        found.kind = Kind::Kinematics;
    } else if (partNumber == part::kLocalState) {
        found.kind = Kind::LocalState;
    } else if (partNumber - part::kFirstChannel < kChannelCount) {
        found.channel = static_cast<Channel>(partNumber - part::kFirstChannel);
        if (found.channel == Channel::BoneLength && node.type != ObjectType::ChainBone) return {};
        found.kind = Kind::Channel;
    } else {
        return {};
    }
    return found;
}

Referent ResolveAction(ActionSource& action, std::uint32_t partNumber) {
    Referent found;
    found.object = &AsNode(*action.owner);
    found.action = &action;
    if (partNumber == part::kSelf) {
        found.kind = Kind::Action;
    } else if (partNumber == part::kAnimEnd) {
        found.kind = Kind::AnimEnd;
    } else if (partNumber - part::kFirstItem < action.items.size()) {
        found.kind = Kind::ActionItem;
        found.index = partNumber - part::kFirstItem;
    } else {
        return {};
    }
    return found;
}

Referent ResolveGroup(Group& group, std::uint32_t partNumber) {
    Referent found;
    if (partNumber != part::kSelf) return found;
    found.kind = Kind::Group;
    found.object = &AsNode(*group.owner);
    found.group = &group;
    return found;
}

Referent ResolveProperty(Property& property, std::uint32_t partNumber) {
    Referent found;
    found.object = &AsNode(*property.owner);
    found.property = &property;
    if (partNumber == part::kSelf) {
        found.kind = Kind::Property;
        return found;
    }
    const std::uint32_t ordinal = partNumber - part::kFirstCurveParameter;
    found.index = ordinal / 2;
    found.kind = ordinal % 2 == 0 ? Kind::CurveParameter : Kind::Curve;
    return found.index < property.curves.size() ? found : Referent();
}

}  // namespace

Referent SceneEditor::Resolve(const Zelk::CRef& ref) const {
    if (ref.Object() == kSceneRootId)
        return ref.Part() == part::kSelf ? ResolveObject(records_.root, part::kSelf) : Referent();
    const Slot* const slot = records_.Find(ref.Object());
    if (slot == nullptr) return {};
    if (const auto* const node = std::get_if<std::unique_ptr<Node>>(slot))
        return ResolveObject(**node, ref.Part());
    if (auto* const action = RecordIn<ActionSource>(slot))
        return ResolveAction(*action, ref.Part());
    if (auto* const group = RecordIn<Group>(slot)) return ResolveGroup(*group, ref.Part());
    if (auto* const property = RecordIn<Property>(slot))
        return ResolveProperty(*property, ref.Part());
    return {};
}

Node* SceneEditor::ObjectOf(const Zelk::CRef& ref) const {
    const Referent referent = Resolve(ref);
    return referent.kind == Kind::Object ? referent.object : nullptr;
}

Node* SceneEditor::ObjectOf(const Zelk::CRef& ref, ObjectType type) const {
    Node* const object = ObjectOf(ref);
    return object != nullptr && object->type == type ? object : nullptr;
}

Zelk::CString SceneEditor::NameOf(const Referent& referent) const {
    switch (referent.kind) {
        case Kind::Object:
            return referent.object->name;
        case Kind::LocalState:
            return Text(std::wstring(kLocalStateName));
        case Kind::Channel:
            return Text(std::wstring(kChannelNames[static_cast<std::size_t>(referent.channel)]));
        case Kind::Action:
            return referent.action->name;
        case Kind::AnimEnd:
            return Text(std::wstring(kAnimEndName));
        case Kind::Group:
            return referent.group->name;
        case Kind::Property:
            return referent.property->name;
        case Kind::CurveParameter:
            return referent.property->curves[referent.index].name;
        case Kind::None:
        case Kind::Kinematics:
        case Kind::ActionItem:
        case Kind::Curve:
            break;
    }
    return {};
}

bool SceneEditor::HasName(const Referent& referent, std::wstring_view name) const {
    if (referent.kind == Kind::Channel)
        return kChannelNames[static_cast<std::size_t>(referent.channel)] == name;
    return View(NameOf(referent)) == name;
}

std::wstring SceneEditor::ObjectFullName(const Node& object) const {
    std::wstring name(View(object.name));
    if (object.type == ObjectType::Model || object.model == nullptr) return name;
    return std::wstring(View(object.model->name)) + L'.' + name;
}

Zelk::CString SceneEditor::FullNameOf(const Referent& referent) const {
    if (referent.object == nullptr || referent.kind == Kind::Kinematics ||
        referent.kind == Kind::ActionItem || referent.kind == Kind::Curve)
        return {};
    std::wstring name = ObjectFullName(*referent.object);
    const auto append = [&name](std::wstring_view tail) { (name += L'.') += tail; };
    if (referent.kind == Kind::LocalState) append(kLocalStatePath);
    if (referent.kind == Kind::Channel)
        append(kChannelPaths[static_cast<std::size_t>(referent.channel)]);
    if (referent.action != nullptr) append(View(referent.action->name));
    if (referent.kind == Kind::AnimEnd) append(kAnimEndName);
    if (referent.group != nullptr) append(View(referent.group->name));
    if (referent.property != nullptr) {
        append(View(referent.property->name));
        if (referent.kind == Kind::CurveParameter)
            append(View(referent.property->curves[referent.index].name));
    }
    return Text(name);
}

Zelk::CRef SceneEditor::ParentOf(const Zelk::CRef& ref, const Referent& referent) const {
    const Zelk::CRef whole(ref.Object(), part::kSelf);
    switch (referent.kind) {
        case Kind::Object:
            return referent.object->parent == nullptr
                       ? Zelk::CRef()
                       : Zelk::CRef(referent.object->parent->id, part::kSelf);
        case Kind::Channel:
            return referent.channel == Channel::BoneLength
                       ? whole
                       : Zelk::CRef(ref.Object(), part::kLocalState);
        case Kind::LocalState:
        case Kind::AnimEnd:
        case Kind::CurveParameter:
            return whole;
        case Kind::Action:
        case Kind::Group:
        case Kind::Property:
            return Zelk::CRef(referent.object->id, part::kSelf);
        case Kind::None:
        case Kind::Kinematics:
        case Kind::ActionItem:
        case Kind::Curve:
            break;
    }
    return {};
}

Node& SceneEditor::ModelOf(Node& object) const {
    return object.model == nullptr ? records_.root : AsNode(*object.model);
}

}  // namespace headless
