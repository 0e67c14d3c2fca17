#include "headless/scene.h"

#include <string>
#include <utility>

#include "headless/scene_editor.h"
#include "headless/scene_records.h"
#include "headless/target.h"

namespace headless {

Scene::Impl::Impl(std::uint32_t first) : firstId(first) {
    root.id = kSceneRootId;
    root.type = ObjectType::Model;
    root.name = L"Scene_Root";
    root.model = &root;
    root.modelData = std::make_unique<ModelData>();
    root.AllocateGlobal();
    root.globalValid = true;
}

const Slot* Scene::Impl::Find(std::uint32_t id) const {
    return id >= firstId && id - firstId < slots.size() ? &slots[id - firstId] : nullptr;
}

Node* Scene::Impl::FindNode(std::uint32_t id) const {
    const Slot* const slot = Find(id);
    const auto* const node = slot == nullptr ? nullptr : std::get_if<std::unique_ptr<Node>>(slot);
    return node == nullptr ? nullptr : node->get();
}

Scene::Scene() : impl_(std::make_unique<Impl>(1)) {}

Scene::~Scene() = default;

std::vector<const Object*> Scene::Objects() const {
    std::vector<const Object*> objects;
    for (const Slot& slot : impl_->slots)
        if (const auto* const node = std::get_if<std::unique_ptr<Node>>(&slot))
            objects.push_back(node->get());
    return objects;
}

std::vector<const Object*> Scene::Models() const {
    std::vector<const Object*> models;
    for (const std::uint32_t id : impl_->models)
        models.push_back(impl_->FindNode(id));
    return models;
}

const Object* Scene::FindObject(std::uint32_t id) const {
    return impl_->FindNode(id);
}

const ActionSource* Scene::FindAction(std::uint32_t id) const {
    return RecordIn<ActionSource>(impl_->Find(id));
}

Zelk::CString Scene::FullName(std::uint32_t id) const {
    // FullNameOf changes nothing, but an editor can only be constructed with a scene that is not
    // const.
    const SceneEditor editor(const_cast<Scene&>(*this));
    return editor.FullNameOf(editor.Resolve(Zelk::CRef(id, part::kSelf)));
}

const Object* Scene::FindIn(const Object& model, std::wstring_view name) const {
    if (!model.modelData) return nullptr;
    return name.empty() ? &model : FindObject(model.modelData->objectNames.Find(name));
}

Scene::Target Scene::TargetOn(const Object* object, Channel channel) {
    if (object == nullptr) return {};
    if (channel == Channel::BoneLength && object->type != ObjectType::ChainBone) return {};
    return {object, channel};
}

Scene::Target Scene::ResolveTarget(const Object& model, const Zelk::CString& target) const {
    const SplitTarget split = Split(View(target));
    return split.channel ? TargetOn(FindIn(model, split.object), *split.channel) : Target();
}

Scene::Target Scene::ResolveTarget(const Object& model, const ActionItem& item) const {
    return item.channel ? TargetOn(FindIn(model, View(item.object)), *item.channel) : Target();
}

const std::vector<std::unique_ptr<Property>>& Object::Properties() const {
    static const std::vector<std::unique_ptr<Property>> none;
    return propertyData ? propertyData->properties : none;
}

ActionItem::ActionItem(ActionItem&& other) noexcept
    : object(std::move(other.object)),
      channel(other.channel),
      active(other.active),
      isCurve_(other.isCurve_) {
    if (!isCurve_) {
        value_ = other.value_;
        return;
    }
    curve_ = other.curve_;
    other.isCurve_ = false;
    other.value_ = 0.0;
}

Zelk::CString ActionItem::Target() const {
    if (!channel) return object;
    const std::wstring path(kChannelPaths[static_cast<std::size_t>(*channel)]);
    return object.IsEmpty() ? Text(path) : object + Text(L'.' + path);
}

}  // namespace headless
