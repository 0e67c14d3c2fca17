// The one hand that changes a scene: it makes, names, moves and deletes, and keeps the records
// true. Host operations, commands and nothing else go through it. What a reference or a position
// cannot give comes back as null or as a failing status, with the scene as it was.
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

// What goes without a wish is called this.
inline constexpr std::wstring_view kActionName = L"Action";
inline constexpr std::wstring_view kGroupName = L"Group";
inline constexpr std::wstring_view kPropertyName = L"Property";

// What a reference means now.
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
    Node* object = nullptr;  // itself, of a part the whole, else the owner
    Channel channel = Channel::PosX;
    ActionSource* action = nullptr;
    Group* group = nullptr;
    Property* property = nullptr;
    std::size_t index = 0;  // of an item or a curve
};

class SceneEditor {
  public:
    explicit SceneEditor(Scene& scene) : scene_(scene), records_(*scene.impl_) {}

    // A scene without anything. Ids go on from where they were.
    static void Clear(Scene& scene);
    // Moves everything out of `scene`, which is then as after Clear. Throws std::bad_alloc with the
    // scene unchanged.
    static std::unique_ptr<const Scene> Release(Scene& scene);

    // --- references ---

    Referent Resolve(const Zelk::CRef& ref) const;
    // The object or the scene root; null for anything else, parts included.
    Node* ObjectOf(const Zelk::CRef& ref) const;
    // Like ObjectOf, of that type; the scene root is a model.
    Node* ObjectOf(const Zelk::CRef& ref, ObjectType type) const;
    // Empty for what has no name.
    Zelk::CString NameOf(const Referent& referent) const;
    bool IsCalled(const Referent& referent, std::wstring_view name) const;
    Zelk::CString FullNameOf(const Referent& referent) const;
    // The empty reference for what stands under nothing, the top models included.
    Zelk::CRef ParentOf(const Zelk::CRef& ref, const Referent& referent) const;
    // The model that an object belongs to: itself, one above it, or the scene root.
    Node& ModelOf(Node& object) const;

    // --- objects ---

    // Null where there is no id left, as with all that makes something.
    Node* MakeObject(Node& parent, ObjectType type, const Zelk::CString& name);
    // Null with a failing status.
    Node* MakeModel(Node& parent, const Zelk::CRefArray& objects, const Zelk::CString& name,
                    Zelk::CStatus& status);
    void Rename(const Referent& referent, const Zelk::CString& name);
    // The objects keep their local states, an effector its place.
    Zelk::CStatus Reparent(Node& parent, const Zelk::CRefArray& objects);
    // The object, all below it, and what they own.
    void Delete(Node& object);
    void Delete(Property& property);
    // By full name; null without one. Of several, the one made last.
    Node* FindObject(std::wstring_view fullName) const;
    // By full name, else by bare name, then the one made last.
    Property* FindProperty(std::wstring_view name) const;
    // The object of that bare name that was made last.
    Node* FindByBareName(std::wstring_view name) const;

    // --- values ---

    double ValueOf(const Node& object, Channel channel) const;
    // Fails for what the scene works out itself: an effector's state and a bone's position.
    Zelk::CStatus PutValue(Node& object, Channel channel, double value);
    Zelk::CStatus PutTranslation(Node& object, const Zelk::MATH::CVector3& translation);
    // Where the object stands in the scene now.
    const Transform& Global(Node& object);

    // --- chains (positions in scene space) ---

    Node* MakeChain(Node& parent, const Zelk::MATH::CVector3& root, const Zelk::MATH::CVector3& end,
                    const Zelk::MATH::CVector3& normal, const Zelk::CString& name);
    Node* MakeBone(Node& chainRoot, const Zelk::MATH::CVector3& end, const Zelk::CString& name);

    // --- actions, groups, properties ---

    ActionSource* MakeAction(Node& model, const Zelk::CString& name);
    // Its place among the items; `target` must not be empty.
    std::uint32_t AddItem(ActionSource& action, const Zelk::CString& target, ActionItem item);
    // Null with a failing status.
    Group* MakeGroup(Node& model, const Zelk::CRefArray& members, const Zelk::CString& name,
                     Zelk::CStatus& status);
    Property* MakeProperty(Node& owner, const Zelk::CString& name);
    Zelk::CStatus SetKeys(Curve& curve, const Zelk::CTimeArray& times,
                          const Zelk::CValueArray& values, bool keepExisting);
    void MakeClip(Node& model, const ActionSource& motion);
    // Static values onto the model's objects, curves attached. Targets that the model lacks are
    // passed over.
    void Apply(ActionSource& action, Node& owner, Node& model);

  private:
    // tree
    Node& ParentNode(const Node& object) const;
    void Link(Node& parent, Node& object) noexcept;
    void Unlink(Node& object) noexcept;
    bool HasRoomFor(std::uint32_t count) const;
    // With an id, but without name and place.
    std::unique_ptr<Node> NewNode(ObjectType type, Node& parent);
    // NOLINTNEXTLINE(bugprone-exception-escape): moving a pointer throws nothing.
    Node& Install(Node& parent, std::unique_ptr<Node> node) noexcept;
    // Everything below `object`, itself first, parents before children.
    std::vector<Node*> Subtree(Node& object) const;
    bool AreObjects(const Zelk::CRefArray& objects) const;
    bool CanReparent(Node& parent, const Zelk::CRefArray& objects) const;
    void Adopt(Node& parent, Node& object);
    // The model whose namespace holds the object's name; null for the scene root.
    const Object* ModelAround(const Node& object) const;
    void Rehouse(const std::vector<Node*>& moved, Object* model, Node& parent);

    // names
    std::vector<NameTable*> TablesOf(Node& object, Node& parent) const;
    static Zelk::CString TakeName(NameTable& table, const Zelk::CString& wanted,
                                  std::wstring_view otherwise, std::uint32_t id);
    void GiveName(Node& object, Node& parent, const Zelk::CString& wanted);
    void ReleaseName(Node& object);
    std::wstring ObjectFullName(const Node& object) const;

    // deletion
    void LeaveGroups(const std::vector<Node*>& dying);
    // Fills in the roots of the chains that lose bones but stay.
    void LeaveChain(Node& dying, std::vector<Node*>& shortened);
    void DropProperties(const std::vector<Node*>& dying);
    void DropModelData(Node& model);
    void ForgetAttached(Node& model);

    // placement
    Node& PoseSource(const Node& object) const;
    Transform SeenFromPoseSource(const Node& object) const;
    void Invalidate(Node& object) noexcept;
    // After a chain was made.
    void KeepTransformsOf(const Node& chainRoot) noexcept;
    void DropTransforms(Node& chainRoot) noexcept;
    // Marks an effector whose local state has to be worked out again; null is fine.
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
