// SceneEditor creates, names, moves and deletes what a scene holds, and keeps the records
// consistent. The host's operations and commands use it. If its arguments do not allow something,
// it returns null or a failing status, and the scene is unchanged.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "headless/parts.h"
#include "headless/scene_records.h"
#include "host/arrays.h"
#include "host/math.h"
#include "host/ref.h"
#include "host/status.h"

namespace headless {

// Default names.
inline constexpr std::wstring_view kActionName = L"Action";
inline constexpr std::wstring_view kGroupName = L"Group";
inline constexpr std::wstring_view kPropertyName = L"Property";

// What a reference refers to at present.
struct Referent {
    enum class Kind : std::uint8_t {
        None,
        Object,  // the scene root included
        Kinematics,
        LocalState,
        Channel,
        Action,
        AnimEnd,
        ActionItem,
        Group,
        Property,
        CurveParameter,
        Curve
    };
    Kind kind = Kind::None;
    // The object itself; the object that a kinematic part or a channel belongs to; otherwise the
    // owner of the action, the group or the property.
    Node* object = nullptr;
    Channel channel = Channel::PosX;
    ActionSource* action = nullptr;
    Group* group = nullptr;
    Property* property = nullptr;
    std::size_t index = 0;  // of the item in the action, or of the curve in the property
};

class SceneEditor {
  public:
    explicit SceneEditor(Scene& scene) : scene_(scene), records_(*scene.impl_) {}

    // Empties the scene. Its next ids follow the old ones. If memory runs out, it throws
    // std::bad_alloc and the scene is unchanged.
    static void Clear(Scene& scene);
    // Moves everything out of `scene`, which is then as after Clear. Fails as Clear does.
    static std::unique_ptr<const Scene> Release(Scene& scene);

    // --- references ---

    Referent Resolve(const Zelk::CRef& ref) const;
    // The object, or the scene root, that `ref` refers to. Null if it refers to something else,
    // such as a part of an object.
    Node* ObjectOf(const Zelk::CRef& ref) const;
    // The same, but null if the object is of another type. The scene root is a model.
    Node* ObjectOf(const Zelk::CRef& ref, ObjectType type) const;
    // Empty if the referent has no name.
    Zelk::CString NameOf(const Referent& referent) const;
    bool HasName(const Referent& referent, std::wstring_view name) const;
    Zelk::CString FullNameOf(const Referent& referent) const;
    // The empty reference for an object that is directly under the scene root.
    Zelk::CRef ParentOf(const Zelk::CRef& ref, const Referent& referent) const;
    // The model that an object belongs to: the object itself, one above it, or the scene root.
    Node& ModelOf(Node& object) const;

    // --- objects ---

    // Like every Create function, it returns null if no id is left.
    Node* CreateObject(Node& parent, ObjectType type, const Zelk::CString& name);
    // `objects` become children of the new model. Null with a failing status.
    Node* CreateModel(Node& parent, const Zelk::CRefArray& objects, const Zelk::CString& name,
                      Zelk::CStatus& status);
    void Rename(const Referent& referent, const Zelk::CString& name);
    // Moves the objects under `parent`. They keep their local transforms, but an effector keeps its
    // global transform.
    Zelk::CStatus Reparent(Node& parent, const Zelk::CRefArray& objects);
    // Deletes the object, all objects under it, and what they own.
    void Delete(Node& object);
    void Delete(Property& property);
    // The Find functions return null if there is none, and the one made last if there are several.
    Node* FindObject(std::wstring_view fullName) const;
    // By the full name, or if no property has it, by the property's own name.
    Property* FindProperty(std::wstring_view name) const;
    // By the object's own name, without that of its model.
    Node* FindByBareName(std::wstring_view name) const;

    // --- values ---

    double ValueOf(const Node& object, Channel channel) const;
    // Fails for what the scene computes itself, which is an effector's transform and a bone's
    // position, and for the length of anything but a bone.
    Zelk::CStatus PutValue(Node& object, Channel channel, double value);
    // Sets the position and sets the rotation to zero. Fails for a bone and an effector.
    Zelk::CStatus PutTranslation(Node& object, const Zelk::MATH::CVector3& translation);
    // The object's global transform.
    const Transform& Global(Node& object);

    // --- chains; all positions are in scene space ---

    Node* CreateChain(Node& parent, const Zelk::MATH::CVector3& root,
                      const Zelk::MATH::CVector3& end, const Zelk::MATH::CVector3& normal,
                      const Zelk::CString& name);
    Node* CreateBone(Node& chainRoot, const Zelk::MATH::CVector3& end, const Zelk::CString& name);

    // --- actions, groups, properties ---

    ActionSource* CreateAction(Node& model, const Zelk::CString& name);
    // Returns the index of the new item. `target` must not be empty.
    std::uint32_t AddItem(ActionSource& action, const Zelk::CString& target, ActionItem item);
    // Null with a failing status.
    Group* CreateGroup(Node& model, const Zelk::CRefArray& members, const Zelk::CString& name,
                       Zelk::CStatus& status);
    Property* CreateProperty(Node& owner, const Zelk::CString& name);
    Zelk::CStatus SetKeys(Curve& curve, const Zelk::CTimeArray& times,
                          const Zelk::CValueArray& values, bool keepExisting);
    void CreateClip(Node& model, const ActionSource& motion);
    // Gives the static values of the action to the model's objects, and attaches its curves to the
    // model. Targets that the model does not have are skipped.
    void Apply(ActionSource& action, Node& owner, Node& model);

  private:
    // tree
    Node& ParentNode(const Node& object) const;
    void Link(Node& parent, Node& object) noexcept;
    void Unlink(Node& object) noexcept;
    bool HasRoomFor(std::uint32_t count) const;
    // The new node has an id, but no name yet, and is not under its parent yet.
    std::unique_ptr<Node> NewNode(ObjectType type, Node& parent);
    // NOLINTNEXTLINE(bugprone-exception-escape): moving a pointer throws nothing.
    Node& Install(Node& parent, std::unique_ptr<Node> node) noexcept;
    // `object` and everything under it, parents before children.
    std::vector<Node*> Subtree(Node& object) const;
    bool AreObjects(const Zelk::CRefArray& objects) const;
    bool CanReparent(Node& parent, const Zelk::CRefArray& objects) const;
    void Adopt(Node& parent, Node& object);
    // The model whose table holds the object's name; null if it is the scene root's table.
    const Object* ModelAround(const Node& object) const;
    // Gives the objects new names in `model` (null for the scene root), under `parent`.
    void MoveToModel(const std::vector<Node*>& moved, Object* model, Node& parent);

    // names
    std::vector<NameTable*> TablesOf(Node& object, Node& parent) const;
    static Zelk::CString ReserveName(NameTable& table, const Zelk::CString& wanted,
                                     std::wstring_view defaultName, std::uint32_t id);
    void GiveName(Node& object, Node& parent, const Zelk::CString& wanted);
    void FreeName(Node& object);
    std::wstring ObjectFullName(const Node& object) const;

    // deletion
    void LeaveGroups(const std::vector<Node*>& dying);
    // Takes a dying object out of its chain. The root of a chain that loses bones but is not
    // deleted is added to `shortened`.
    void LeaveChain(Node& dying, std::vector<Node*>& shortened);
    void DropProperties(const std::vector<Node*>& dying);
    void DropModelData(Node& model);
    void ForgetAttached(Node& model);

    // transforms
    Node& PoseSource(const Node& object) const;
    Transform SeenFromPoseSource(const Node& object) const;
    void Invalidate(Node& object) noexcept;
    // Called after a chain was made: keeps its global transforms, and drops those of the oldest
    // chain that were kept.
    void KeepTransformsOf(const Node& chainRoot) noexcept;
    void DropTransforms(Node& chainRoot) noexcept;
    // Marks an effector whose local transform has to be computed again. Ignores null.
    void MarkEffector(Object* effector) noexcept;
    void RefreshEffectors();
    void RefreshEffector(Node& effector);
    void ChangeChannel(Node& object, Channel channel, double value);

    // chains
    Transform ChainEnd(Node& chainRoot);
    void PlaceBone(Node& bone, Node& source, const double start[3],
                   const Zelk::MATH::CVector3& end);
    void PlaceEffector(Node& chainRoot, const double end[3]);

    Scene& scene_;
    Scene::Impl& records_;
};

}  // namespace headless
