// Creates objects, actions, groups and properties, and moves objects under other parents.
#include "headless/scene_editor.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "headless/text.h"

namespace headless {

void SceneEditor::Clear(Scene& scene) {
    scene.impl_ = std::make_unique<Scene::Impl>(scene.impl_->NextId());
}

std::unique_ptr<const Scene> SceneEditor::Release(Scene& scene) {
    auto released = std::make_unique<Scene>();
    auto next = std::make_unique<Scene::Impl>(scene.impl_->NextId());
    released->impl_ = std::exchange(scene.impl_, std::move(next));
    return released;
}

// --- tree ---

Node& SceneEditor::ParentNode(const Node& object) const {
    return object.parent == nullptr ? records_.root : AsNode(*object.parent);
}

void SceneEditor::Link(Node& parent, Node& object) noexcept {
    object.parent = &parent == &records_.root ? nullptr : &parent;
    object.previousSibling = parent.lastChild;
    object.nextSibling = nullptr;
    (parent.lastChild == nullptr ? parent.firstChild : parent.lastChild->nextSibling) = &object;
    parent.lastChild = &object;
}

void SceneEditor::Unlink(Node& object) noexcept {
    Node& parent = ParentNode(object);
    Object* const before = object.previousSibling;
    Object* const after = object.nextSibling;
    (before == nullptr ? parent.firstChild : before->nextSibling) = after;
    (after == nullptr ? parent.lastChild : after->previousSibling) = before;
    object.previousSibling = object.nextSibling = nullptr;
}

std::vector<Node*> SceneEditor::Subtree(Node& object) const {
    std::vector<Node*> nodes{&object};
    for (std::size_t index = 0; index < nodes.size(); ++index)
        for (Object* child = nodes[index]->firstChild; child != nullptr; child = child->nextSibling)
            nodes.push_back(&AsNode(*child));
    return nodes;
}

// --- making ---

bool SceneEditor::HasRoomFor(std::uint32_t count) const {
    return records_.slots.size() + count <= kLastId - records_.firstId;
}

std::unique_ptr<Node> SceneEditor::NewNode(ObjectType type, Node& parent) {
    auto node = std::make_unique<Node>();
    node->type = type;
    if (type == ObjectType::Model) {
        node->modelData = std::make_unique<ModelData>();
        node->model = node.get();
    } else {
        node->model = &parent == &records_.root ? nullptr : parent.model;
    }
    node->id = records_.NextId();
    // If the object is not created after all, the id stays unused and its slot empty.
    records_.slots.emplace_back();
    return node;
}

// NOLINTNEXTLINE(bugprone-exception-escape): moving a pointer throws nothing.
Node& SceneEditor::Install(Node& parent, std::unique_ptr<Node> node) noexcept {
    Node& object = *node;
    Link(parent, object);
    records_.slots[object.id - records_.firstId].emplace<std::unique_ptr<Node>>(std::move(node));
    return object;
}

Node* SceneEditor::CreateObject(Node& parent, ObjectType type, const Zelk::CString& name) {
    if (!HasRoomFor(1)) return nullptr;
    std::unique_ptr<Node> node = NewNode(type, parent);
    GiveName(*node, parent, name);
    if (type == ObjectType::Model) records_.models.insert(node->id);
    return &Install(parent, std::move(node));
}

Node* SceneEditor::CreateModel(Node& parent, const Zelk::CRefArray& objects,
                               const Zelk::CString& name, Zelk::CStatus& status) {
    status = Zelk::status::kInvalidArgument;
    if (!CanReparent(parent, objects)) return nullptr;
    status = Zelk::status::kOutOfMemory;
    Node* const model = CreateObject(parent, ObjectType::Model, name);
    if (model == nullptr) return nullptr;
    for (std::uint32_t index = 0; index < objects.GetCount(); ++index)
        Adopt(*model, *ObjectOf(objects[index]));
    RefreshEffectors();
    status = Zelk::status::kOk;
    return model;
}

ActionSource* SceneEditor::CreateAction(Node& model, const Zelk::CString& name) {
    if (!HasRoomFor(1)) return nullptr;
    std::vector<std::unique_ptr<ActionSource>>& actions = model.modelData->actions;
    ReserveRoom(actions);
    auto action = std::make_unique<ActionSource>();
    action->id = records_.NextId();
    action->owner = &model;
    Slot& slot = records_.slots.emplace_back();
    action->name = ReserveName(model.modelData->actionNames, name, kActionName, action->id);
    slot = action.get();
    actions.push_back(std::move(action));
    return actions.back().get();
}

Group* SceneEditor::CreateGroup(Node& model, const Zelk::CRefArray& members,
                                const Zelk::CString& name, Zelk::CStatus& status) {
    status = Zelk::status::kInvalidArgument;
    if (!AreObjects(members)) return nullptr;
    status = Zelk::status::kOutOfMemory;
    if (!HasRoomFor(1)) return nullptr;
    std::vector<std::unique_ptr<Group>>& groups = model.modelData->groups;
    ReserveRoom(groups);
    auto group = std::make_unique<Group>();
    group->id = records_.NextId();
    group->owner = &model;
    group->members.reserve(members.GetCount());
    Slot& slot = records_.slots.emplace_back();
    group->name = ReserveName(model.modelData->groupNames, name, kGroupName, group->id);
    slot = group.get();
    groups.push_back(std::move(group));
    Group* const made = groups.back().get();
    for (std::uint32_t index = 0; index < members.GetCount(); ++index) {
        Node& member = *ObjectOf(members[index]);
        if (!member.groups) member.groups = std::make_unique<std::vector<std::uint32_t>>();
        // An object that is listed twice is added only once.
        if (!member.groups->empty() && member.groups->back() == made->id) continue;
        member.groups->push_back(made->id);
        made->members.push_back(member.id);
    }
    status = Zelk::status::kOk;
    return made;
}

Property* SceneEditor::CreateProperty(Node& owner, const Zelk::CString& name) {
    if (!HasRoomFor(1)) return nullptr;
    if (!owner.propertyData) owner.propertyData = std::make_unique<PropertyData>();
    PropertyData& data = *owner.propertyData;
    ReserveRoom(data.properties);
    ReserveRoom(records_.properties);
    auto property = std::make_unique<Property>();
    property->id = records_.NextId();
    property->owner = &owner;
    Slot& slot = records_.slots.emplace_back();
    property->name = ReserveName(data.names, name, kPropertyName, property->id);
    records_.longestPropertyName =
        std::max<std::size_t>(records_.longestPropertyName, property->name.Length());
    slot = property.get();
    records_.properties.push_back(property->id);
    data.properties.push_back(std::move(property));
    return data.properties.back().get();
}

// --- moving under other parents ---

bool SceneEditor::AreObjects(const Zelk::CRefArray& objects) const {
    for (std::uint32_t index = 0; index < objects.GetCount(); ++index) {
        const Node* const object = ObjectOf(objects[index]);
        if (object == nullptr || object == &records_.root) return false;
    }
    return true;
}

// No object may depend on itself. An object depends on its parent, and an effector also on the end
// of its chain. So the function visits everything that `parent` depends on, and returns false if
// one of `objects` is found there. It searches only for objects that have children or are chain
// roots, because nothing depends on the others.
bool SceneEditor::CanReparent(Node& parent, const Zelk::CRefArray& objects) const {
    if (!AreObjects(objects)) return false;
    std::unordered_set<const Node*> moved;
    for (std::uint32_t index = 0; index < objects.GetCount(); ++index) {
        Node& object = *ObjectOf(objects[index]);
        // A bone cannot leave its chain.
        if (object.type == ObjectType::ChainBone || &object == &parent) return false;
        if (object.firstChild != nullptr || object.type == ObjectType::ChainRoot)
            moved.insert(&object);
    }
    if (moved.empty()) return true;
    std::unordered_set<const Node*> seen{&parent};
    std::vector<Node*> waiting{&parent};
    while (!waiting.empty()) {
        Node& node = *waiting.back();
        waiting.pop_back();
        if (moved.count(&node) != 0) return false;
        for (Node* const source : {&ParentNode(node), &PoseSource(node)})
            if (seen.insert(source).second) waiting.push_back(source);
    }
    return true;
}

const Object* SceneEditor::ModelAround(const Node& object) const {
    if (object.type != ObjectType::Model) return object.model;
    return object.parent == nullptr ? nullptr : object.parent->model;
}

// All old names are freed before the first new name is given. If they were not, the old name of one
// moved object could prevent another moved object from keeping its name.
void SceneEditor::MoveToModel(const std::vector<Node*>& moved, Object* model, Node& parent) {
    std::vector<Zelk::CString> names;
    names.reserve(moved.size());
    for (Node* const node : moved) {
        names.push_back(node->name);
        FreeName(*node);
    }
    for (std::size_t index = 0; index < moved.size(); ++index) {
        if (moved[index]->type != ObjectType::Model) moved[index]->model = model;
        if (!names[index].IsEmpty()) GiveName(*moved[index], parent, names[index]);
    }
}

// If the object moves into another model, the object and all objects under it get names that are
// unique in that model. But the objects in a moved model stay in that model and keep their names.
void SceneEditor::Adopt(Node& parent, Node& object) {
    Object* const model = &parent == &records_.root ? nullptr : parent.model;
    const Object* const before = ModelAround(object);
    if (before != model) {
        std::vector<Node*> moved{&object};
        for (std::size_t index = 0; index < moved.size(); ++index) {
            if (moved[index]->type == ObjectType::Model) continue;
            for (Object* child = moved[index]->firstChild; child; child = child->nextSibling)
                moved.push_back(&AsNode(*child));
        }
        MoveToModel(moved, model, parent);
    }
    Unlink(object);
    Link(parent, object);
    // Moving an effector does not change its global transform, nor those of the objects under it.
    if (object.type == ObjectType::ChainEffector && object.chainRoot != nullptr)
        MarkEffector(&object);
    else
        Invalidate(object);
}

Zelk::CStatus SceneEditor::Reparent(Node& parent, const Zelk::CRefArray& objects) {
    if (!CanReparent(parent, objects)) return Zelk::status::kInvalidArgument;
    for (std::uint32_t index = 0; index < objects.GetCount(); ++index)
        Adopt(parent, *ObjectOf(objects[index]));
    RefreshEffectors();
    return Zelk::status::kOk;
}

}  // namespace headless
