// Implements the host's classes for scene items, 3D objects, chains and models.
#include "headless/operations.h"
#include "headless/session_state.h"
#include "host/scene_objects.h"

using headless::Editor;
using headless::Fails;
using headless::Node;
using headless::ObjectType;
using headless::Operation;
using headless::SceneEditor;

namespace {

// Makes `handle` refer to `made`. Fails if `made` is null, which means that the editor had no id
// left.
template <class Made, class Handle>
Zelk::CStatus FillHandle(const Made* made, Handle& handle) {
    if (made == nullptr) return Zelk::status::kOutOfMemory;
    handle = Handle(Zelk::CRef(made->id, headless::part::kSelf));
    return Zelk::status::kOk;
}

}  // namespace

namespace Zelk {

CStatus SceneItem::AddCustomProperty(const CString& name, bool, CustomProperty& property) {
    if (Fails(Operation::AddCustomProperty)) return status::kFail;
    SceneEditor editor = Editor();
    Node* const owner = editor.ObjectOf(ref_);
    // The scene root can own objects, actions and groups, but no properties.
    if (owner == nullptr || owner->id == headless::kSceneRootId) return status::kFail;
    return FillHandle(editor.CreateProperty(*owner, name), property);
}

ChainEffector ChainElement::GetEffector() const {
    if (Fails(Operation::GetEffector)) return ChainEffector();
    const Node* const element = Editor().ObjectOf(ref_);
    if (element == nullptr || element->chainRoot == nullptr) return ChainEffector();
    const headless::Object* const effector = element->chainRoot->chainData->effector;
    if (effector == nullptr) return ChainEffector();
    return ChainEffector(CRef(effector->id, headless::part::kSelf));
}

CRefArray ChainRoot::GetBones() const {
    CRefArray bones;
    if (Fails(Operation::GetBones)) return bones;
    const Node* const root = Editor().ObjectOf(ref_, ObjectType::ChainRoot);
    if (root == nullptr) return bones;
    for (const headless::Object* const bone : root->chainData->bones)
        bones.Add(CRef(bone->id, headless::part::kSelf));
    return bones;
}

CStatus ChainRoot::AddBone(const MATH::CVector3& end, zkChainBoneType, const CString& name,
                           ChainBone& bone) {
    if (Fails(Operation::AddBone)) return status::kFail;
    SceneEditor editor = Editor();
    Node* const root = editor.ObjectOf(ref_, ObjectType::ChainRoot);
    if (root == nullptr) return status::kFail;
    return FillHandle(editor.CreateBone(*root, end, name), bone);
}

ActionSource Model::AddActionSource(const CString& name) {
    ActionSource source;
    if (Fails(Operation::AddActionSource)) return source;
    SceneEditor editor = Editor();
    Node* const model = editor.ObjectOf(ref_, ObjectType::Model);
    if (model != nullptr) FillHandle(editor.CreateAction(*model, name), source);
    return source;
}

CStatus Model::AddGroup(const CRefArray& members, const CString& name, bool, Group& group) {
    if (Fails(Operation::AddGroup)) return status::kFail;
    SceneEditor editor = Editor();
    Node* const model = editor.ObjectOf(ref_, ObjectType::Model);
    if (model == nullptr) return status::kFail;
    CStatus result;
    const headless::Group* const made = editor.CreateGroup(*model, members, name, result);
    return made == nullptr ? result : FillHandle(made, group);
}

}  // namespace Zelk

Zelk::Kinematics Zelk3DObject::GetKinematics() const {
    if (Fails(Operation::GetKinematics)) return Zelk::Kinematics();
    const Node* const object = Editor().ObjectOf(ref_);
    if (object == nullptr || object->id == headless::kSceneRootId) return Zelk::Kinematics();
    return Zelk::Kinematics(Zelk::CRef(ref_.Object(), headless::part::kKinematics));
}

Zelk::CStatus Zelk3DObject::AddNull(const Zelk::CString& name, Zelk::Null& null) {
    if (Fails(Operation::AddNull)) return Zelk::status::kFail;
    SceneEditor editor = Editor();
    Node* const parent = editor.ObjectOf(ref_);
    if (parent == nullptr) return Zelk::status::kFail;
    return FillHandle(editor.CreateObject(*parent, ObjectType::Null, name), null);
}

Zelk::CStatus Zelk3DObject::AddModel(const Zelk::CRefArray& objects, const Zelk::CString& name,
                                     Zelk::Model& model) {
    if (Fails(Operation::AddModel)) return Zelk::status::kFail;
    SceneEditor editor = Editor();
    Node* const parent = editor.ObjectOf(ref_);
    if (parent == nullptr) return Zelk::status::kFail;
    Zelk::CStatus result;
    const Node* const made = editor.CreateModel(*parent, objects, name, result);
    return made == nullptr ? result : FillHandle(made, model);
}

Zelk::CStatus Zelk3DObject::Add2DChain(const Zelk::MATH::CVector3& root,
                                       const Zelk::MATH::CVector3& effector,
                                       const Zelk::MATH::CVector3& normal, Zelk::zk2DChainAlignType,
                                       const Zelk::CString& name, Zelk::ChainRoot& chain) {
    if (Fails(Operation::Add2DChain)) return Zelk::status::kFail;
    SceneEditor editor = Editor();
    Node* const parent = editor.ObjectOf(ref_);
    if (parent == nullptr) return Zelk::status::kFail;
    return FillHandle(editor.CreateChain(*parent, root, effector, normal, name), chain);
}

Zelk::CStatus Zelk3DObject::AddChild(const Zelk::CRefArray& objects) {
    if (Fails(Operation::AddChild)) return Zelk::status::kFail;
    SceneEditor editor = Editor();
    Node* const parent = editor.ObjectOf(ref_);
    return parent == nullptr ? Zelk::CStatus(Zelk::status::kFail)
                             : editor.Reparent(*parent, objects);
}
