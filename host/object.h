// The base classes of everything in the scene that has a name.
#pragma once

#include "host/arrays.h"
#include "host/export.h"
#include "host/ref.h"
#include "host/status.h"
#include "host/string.h"

namespace Zelk {
class Model;
}

// Anything with a name. This class is not in the namespace, because the host declares it that way.
class ZELK_API ZKObject : public Zelk::CBase {
  public:
    using Zelk::CBase::CBase;

    Zelk::CString GetName() const;
    // The host may append a number to keep the name unique; GetName then returns the result.
    void PutName(const Zelk::CString& name);
    // For example "Model", "Model.Object", "Model.Object.kine.local.posx" or
    // "Model.Object.Property".
    Zelk::CString GetFullName() const;
    // Empty if there is no parent, as for an object directly under the scene root.
    ZKObject GetParent() const;
};

namespace Zelk {

class ZELK_API ProjectItem : public ZKObject {
  public:
    using ZKObject::ZKObject;

    // The model that this belongs to. A model belongs to itself, an object in no model to the scene
    // root.
    Model GetModel() const;
    // The item's parameters; find one with CRefArray::GetItem.
    CRefArray GetParameters() const;
    // Sets the parameter of that name at that time, which is in frames or kCurrentTime.
    CStatus PutParameterValue(const CString& name, double value, double time);
};

}  // namespace Zelk
