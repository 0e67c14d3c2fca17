// Finds objects and properties by name, and deletes them.
#include <algorithm>

#include "headless/scene_editor.h"
#include "headless/text.h"

namespace headless {

namespace {

bool IsDying(const Object* object) {
    return object != nullptr && AsNode(*object).dying;
}

void LeaveGroup(Object& member, std::uint32_t group) {
    std::erase(*member.groups, group);
    if (member.groups->empty()) member.groups.reset();
}

// Returns the object that was made later. If one of them is null, it returns the other one.
Node* LaterOf(Node* a, Node* b) {
    if (a == nullptr || b == nullptr) return a == nullptr ? b : a;
    return a->id > b->id ? a : b;
}

}  // namespace

// --- finding ---

// Names may contain dots, so the dot after the model's name may be any dot in `fullName`.
Node* SceneEditor::FindObject(std::wstring_view fullName) const {
    const NameTable& models = records_.root.modelData->objectNames;
    Node* found = records_.FindNode(models.Find(fullName));
    for (std::size_t dot = fullName.find(L'.');
         dot != std::wstring_view::npos && dot <= records_.longestModelName;
         dot = fullName.find(L'.', dot + 1)) {
        const Node* const model = records_.FindNode(models.Find(fullName.substr(0, dot)));
        if (model == nullptr || !model->modelData) continue;
        Node* const object =
            records_.FindNode(model->modelData->objectNames.Find(fullName.substr(dot + 1)));
        // The full name of a model is its own name, even if the model is in another model.
        if (object != nullptr && object->type != ObjectType::Model) found = LaterOf(found, object);
    }
    return found;
}

Property* SceneEditor::FindProperty(std::wstring_view name) const {
    std::uint32_t foundId = 0;
    for (std::size_t dot = name.rfind(L'.');
         dot != std::wstring_view::npos && name.size() - dot - 1 <= records_.longestPropertyName;
         dot = dot == 0 ? std::wstring_view::npos : name.rfind(L'.', dot - 1)) {
        const Node* const owner = FindObject(name.substr(0, dot));
        if (owner == nullptr || !owner->propertyData) continue;
        const std::uint32_t id = owner->propertyData->names.Find(name.substr(dot + 1));
        if (id > foundId) foundId = id;
    }
    for (std::size_t index = records_.properties.size(); foundId == 0 && index-- > 0;) {
        const std::uint32_t id = records_.properties[index];
        // The full name is compared, too, because FindObject does not find an owner whose own name
        // is empty.
        const Zelk::CString fullName = scene_.FullName(id);
        if (View(RecordIn<Property>(records_.Find(id))->name) == name || View(fullName) == name)
            foundId = id;
    }
    return RecordIn<Property>(records_.Find(foundId));
}

Node* SceneEditor::FindByBareName(std::wstring_view name) const {
    Node* found = records_.FindNode(records_.root.modelData->objectNames.Find(name));
    for (const std::uint32_t id : records_.models) {
        const ModelData& model = *records_.FindNode(id)->modelData;
        found = LaterOf(found, records_.FindNode(model.objectNames.Find(name)));
    }
    return found;
}

// --- deleting ---

void SceneEditor::Delete(Property& property) {
    const std::uint32_t id = property.id;
    std::unique_ptr<PropertyData>& data = property.owner->propertyData;
    data->names.Free(property.name);
    std::erase_if(data->properties, [id](const auto& kept) { return kept->id == id; });
    if (data->properties.empty()) data.reset();
    // The search begins at the end, because the property is mostly the last one.
    std::vector<std::uint32_t>& all = records_.properties;
    all.erase(std::find(all.rbegin(), all.rend(), id).base() - 1);
    records_.Forget(id);
}

void SceneEditor::LeaveGroups(const std::vector<Node*>& dying) {
    std::vector<std::uint32_t> ids;
    for (const Node* const node : dying)
        if (node->groups) ids.insert(ids.end(), node->groups->begin(), node->groups->end());
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    for (const std::uint32_t id : ids)
        std::erase_if(RecordIn<Group>(records_.Find(id))->members,
                      [this](std::uint32_t member) { return records_.FindNode(member)->dying; });
}

void SceneEditor::LeaveChain(Node& dying, std::vector<Node*>& shortened) {
    if (dying.chainRoot == nullptr) return;
    ChainData& chain = *dying.chainRoot->chainData;
    if (dying.type == ObjectType::ChainRoot) {
        // An effector that is not under the chain root is not deleted with the root. The effector
        // keeps its transform and belongs to no chain any more.
        if (chain.effector != nullptr && !IsDying(chain.effector))
            chain.effector->chainRoot = nullptr;
        return;
    }
    if (IsDying(dying.chainRoot)) return;
    if (&dying == chain.effector) {
        chain.effector = nullptr;
        return;
    }
    // The bones after a dying bone are under it, so they are dying, too. So if any bone is dying,
    // the last bone is dying.
    if (chain.bones.empty() || !IsDying(chain.bones.back())) return;
    if (chain.effector != nullptr && !IsDying(chain.effector)) Invalidate(AsNode(*chain.effector));
    while (!chain.bones.empty() && IsDying(chain.bones.back()))
        chain.bones.pop_back();
    shortened.push_back(&AsNode(*dying.chainRoot));
}

void SceneEditor::DropProperties(const std::vector<Node*>& dying) {
    bool any = false;
    for (const Node* const node : dying)
        any = any || node->propertyData;
    if (!any) return;
    std::erase_if(records_.properties, [this](std::uint32_t id) {
        return IsDying(RecordIn<Property>(records_.Find(id))->owner);
    });
    for (const Node* const node : dying)
        for (const auto& property : node->Properties())
            records_.Forget(property->id);
}

void SceneEditor::ForgetAttached(Node& model) {
    const ActionSource* const attached = model.modelData->attached;
    model.modelData->attached = nullptr;
    const auto found = records_.attachedElsewhere.find(attached);
    if (found == records_.attachedElsewhere.end()) return;
    std::erase(found->second, &model);
    if (found->second.empty()) records_.attachedElsewhere.erase(found);
}

void SceneEditor::DropModelData(Node& model) {
    records_.models.erase(model.id);
    ForgetAttached(model);
    for (const auto& action : model.modelData->actions) {
        const auto found = records_.attachedElsewhere.find(action.get());
        if (found != records_.attachedElsewhere.end()) {
            for (Node* const other : found->second)
                other->modelData->attached = nullptr;
            records_.attachedElsewhere.erase(found);
        }
        records_.Forget(action->id);
    }
    for (const auto& group : model.modelData->groups) {
        for (const std::uint32_t member : group->members)
            LeaveGroup(*records_.FindNode(member), group->id);
        records_.Forget(group->id);
    }
}

void SceneEditor::Delete(Node& object) {
    const std::vector<Node*> dying = Subtree(object);
    for (Node* const node : dying)
        node->dying = true;
    LeaveGroups(dying);
    DropProperties(dying);
    std::vector<Node*> shortened;
    for (Node* const node : dying) {
        LeaveChain(*node, shortened);
        FreeName(*node);
    }
    for (Node* const node : dying)
        if (node->modelData) DropModelData(*node);
    Unlink(object);
    for (Node* const chainRoot : shortened) {
        const Transform end = ChainEnd(*chainRoot);
        PlaceEffector(*chainRoot, end.origin);
    }
    RefreshEffectors();
    for (const Node* const node : dying)
        records_.Forget(node->id);
}

}  // namespace headless
