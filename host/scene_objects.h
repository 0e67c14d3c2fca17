// The objects in a scene. Positions that are passed to Add2DChain and AddBone are in scene space;
// all other transforms are relative to the parent.
#pragma once

#include "host/action.h"
#include "host/arrays.h"
#include "host/constants.h"
#include "host/export.h"
#include "host/math.h"
#include "host/object.h"
#include "host/parameter.h"

namespace Zelk {
class Null;
class ChainRoot;
class ChainBone;
class ChainEffector;

class ZELK_API SceneItem : public ProjectItem {
  public:
    using ProjectItem::ProjectItem;

    CStatus AddCustomProperty(const CString& name, bool branch, CustomProperty& property);
};

}  // namespace Zelk

class ZELK_API Zelk3DObject : public Zelk::SceneItem {
  public:
    using Zelk::SceneItem::SceneItem;

    Zelk::Kinematics GetKinematics() const;
    Zelk::CStatus AddNull(const Zelk::CString& name, Zelk::Null& null);
    // `objects` become children of the new model.
    Zelk::CStatus AddModel(const Zelk::CRefArray& objects, const Zelk::CString& name,
                           Zelk::Model& model);
    // Adds a chain root at the position `root`, a bone from there to the position `effector`, and
    // an effector at the end of the bone. The bone's X axis points along the bone. Its Z axis is
    // perpendicular to the bone and as close to `normal` as possible.
    Zelk::CStatus Add2DChain(const Zelk::MATH::CVector3& root, const Zelk::MATH::CVector3& effector,
                             const Zelk::MATH::CVector3& normal, Zelk::zk2DChainAlignType alignment,
                             const Zelk::CString& name, Zelk::ChainRoot& chain);
    // Makes `objects` children of this object. They keep their local transforms, but an effector
    // keeps its global transform. Fails and changes nothing if one of them is a bone, or this
    // object itself, or an object on which this object's transform depends, such as this object's
    // parent.
    Zelk::CStatus AddChild(const Zelk::CRefArray& objects);
};

namespace Zelk {

class ZELK_API Null : public Zelk3DObject {
  public:
    using Zelk3DObject::Zelk3DObject;
};

class ZELK_API ChainElement : public Zelk3DObject {
  public:
    using Zelk3DObject::Zelk3DObject;

    ChainEffector GetEffector() const;
};

class ZELK_API ChainRoot : public ChainElement {
  public:
    using ChainElement::ChainElement;

    // The bones in order; the first one is next to the root.
    CRefArray GetBones() const;
    // Appends a bone from the chain's end to the position `end`, and moves the effector to `end`.
    CStatus AddBone(const MATH::CVector3& end, zkChainBoneType type, const CString& name,
                    ChainBone& bone);
};

class ZELK_API ChainBone : public ChainElement {
  public:
    using ChainElement::ChainElement;
};

class ZELK_API ChainEffector : public ChainElement {
  public:
    using ChainElement::ChainElement;
};

class ZELK_API Model : public Zelk3DObject {
  public:
    using Zelk3DObject::Zelk3DObject;

    // The result is empty if the host could not add the action.
    ActionSource AddActionSource(const CString& name);
    CStatus AddGroup(const CRefArray& members, const CString& name, bool branch, Group& group);
};

}  // namespace Zelk
