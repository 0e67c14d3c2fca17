// SceneEditor creates, names, moves and deletes what a scene holds, and keeps the records
// consistent. The host's operations and commands use it. If the arguments of a function are not
// allowed, the function returns null or a failing status and leaves the scene unchanged.
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

// The names that are used if the caller gives an empty name.
inline constexpr std::wstring_view kActionName = L"Action";
inline constexpr std::wstring_view kGroupName = L"Group";
inline constexpr std::wstring_view kPropertyName = L"Property";

// What a reference refers to. It is only valid until the scene changes.
struct Referent {
    enum class Kind : std::uint8_t {
        None,
        Object,  // an object, or the scene root
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
    // The object that is referred to. For kinematics, a local state or a channel, the object that
    // it belongs to. For the kinds from Action on, the object that owns the action, group or
    // property.
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

    // Empties the scene. The ids of new objects follow the old ids. If memory runs out, Clear
    // throws std::bad_alloc and the scene is unchanged.
    static void Clear(Scene& scene);
    // Moves everything out of `scene` into the returned scene. `scene` is then empty, as after
    // Clear. If memory runs out, Release throws std::bad_alloc and `scene` is unchanged.
    static std::unique_ptr<const Scene> Release(Scene& scene);

    // --- references ---

    Referent Resolve(const Zelk::CRef& ref) const;
    // The object, or the scene root, that `ref` refers to. Null if it refers to something else,
    // such as a part of an object.
    Node* ObjectOf(const Zelk::CRef& ref) const;
    // Like the function above, but also null if the object's type is not `type`. The type of the
    // scene root is Model.
    Node* ObjectOf(const Zelk::CRef& ref, ObjectType type) const;
    // Empty if the referent has no name.
    Zelk::CString NameOf(const Referent& referent) const;
    bool HasName(const Referent& referent, std::wstring_view name) const;
    Zelk::CString FullNameOf(const Referent& referent) const;
    // Finds the parent of what `ref` refers to; `referent` is Resolve(ref). Returns the empty
    // reference if there is no parent. An object directly under the scene root has none.
    Zelk::CRef ParentOf(const Zelk::CRef& ref, const Referent& referent) const;
    // The model that an object belongs to: the object itself, a model above it, or the scene root.
    Node& ModelOf(Node& object) const;

    // --- objects ---

    // Returns null if no id is left, as every Create function does.
    Node* CreateObject(Node& parent, ObjectType type, const Zelk::CString& name);
    // `objects` become children of the new model. If the result is null, `status` says why.
    Node* CreateModel(Node& parent, const Zelk::CRefArray& objects, const Zelk::CString& name,
                      Zelk::CStatus& status);
    void Rename(const Referent& referent, const Zelk::CString& name);
    // Makes `objects` children of `parent`. They keep their local transforms, but an effector keeps
    // its global transform.
    Zelk::CStatus Reparent(Node& parent, const Zelk::CRefArray& objects);
    // Deletes the object, all objects under it, and what they own.
    void Delete(Node& object);
    void Delete(Property& property);
    // The Find functions return null if nothing has that name. If several have it, they return the
    // one that was made last.
    Node* FindObject(std::wstring_view fullName) const;
    // Searches for a property with this full name. If there is none, it searches for a property
    // with this own name.
    Property* FindProperty(std::wstring_view name) const;
    // Searches for an object whose own name, without the name of its model, is `name`.
    Node* FindByBareName(std::wstring_view name) const;

    // --- values ---

    double ValueOf(const Node& object, Channel channel) const;
    // Sets one channel. Fails for the channels that the scene itself computes: all those of an
    // effector, and the position of a bone. Also fails for the length of an object that is not a
    // bone.
    Zelk::CStatus PutValue(Node& object, Channel channel, double value);
    // Sets the position to `translation`, and the rotation to zero. Fails for a bone and an
    // effector.
    Zelk::CStatus PutTranslation(Node& object, const Zelk::MATH::CVector3& translation);
    // Returns the object's global transform, after computing it if it is not valid.
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
    // If the result is null, `status` says why.
    Group* CreateGroup(Node& model, const Zelk::CRefArray& members, const Zelk::CString& name,
                       Zelk::CStatus& status);
    Property* CreateProperty(Node& owner, const Zelk::CString& name);
    Zelk::CStatus SetKeys(Curve& curve, const Zelk::CTimeArray& times,
                          const Zelk::CValueArray& values, bool keepExisting);
    void CreateClip(Node& model, const ActionSource& motion);
    // Sets the channels of the model's objects to the static values of the action, and attaches the
    // action's curves to the model. `owner` is the owner of the action. Items whose targets do not
    // exist in the model are skipped.
    void Apply(ActionSource& action, Node& owner, Node& model);

  private:
    // tree
    Node& ParentNode(const Node& object) const;
    void Link(Node& parent, Node& object) noexcept;
    void Unlink(Node& object) noexcept;
    bool HasRoomFor(std::uint32_t count) const;
    // The new node has an id. It has no name yet, and is not among the parent's children yet.
    std::unique_ptr<Node> NewNode(ObjectType type, Node& parent);
    // NOLINTNEXTLINE(bugprone-exception-escape): moving a pointer throws nothing.
    Node& Install(Node& parent, std::unique_ptr<Node> node) noexcept;
    // `object` and everything under it, parents before children.
    std::vector<Node*> Subtree(Node& object) const;
    bool AreObjects(const Zelk::CRefArray& objects) const;
    bool CanReparent(Node& parent, const Zelk::CRefArray& objects) const;
    void Adopt(Node& parent, Node& object);
    // The nearest model above the object, also if the object itself is a model. Null if only the
    // scene root is above it.
    const Object* ModelAround(const Node& object) const;
    // Makes the objects belong to `model`, which is null for the scene root, and gives them names
    // that are unique there. `parent` is the object under which they are moved.
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
    // Removes a dying object from its chain. If the chain loses bones but its root is not deleted,
    // the root is added to `shortened`.
    void LeaveChain(Node& dying, std::vector<Node*>& shortened);
    void DropProperties(const std::vector<Node*>& dying);
    void DropModelData(Node& model);
    void ForgetAttached(Node& model);

    // transforms
    Node& PoseSource(const Node& object) const;
    Transform SeenFromPoseSource(const Node& object) const;
    void Invalidate(Node& object) noexcept;
    // Called after a chain was made. `latestChains` lists the chains whose global transforms stay
    // stored. This function adds the new chain to the list in place of the oldest one, and calls
    // DropTransforms for the oldest one.
    void KeepTransformsOf(const Node& chainRoot) noexcept;
    void DropTransforms(Node& chainRoot) noexcept;
    // Notes that the local transform of the effector has to be computed again. Does nothing if
    // `effector` is null.
    void MarkEffector(Object* effector) noexcept;
    // Computes the local transforms of all effectors that MarkEffector noted.
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
