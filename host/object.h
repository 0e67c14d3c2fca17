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

// Anything that has a name. This class is not in the namespace Zelk, because the host declares it
// outside.
class ZELK_API ZKObject : public Zelk::CBase {
  public:
    using Zelk::CBase::CBase;

    Zelk::CString GetName() const;
    // The host may append a number to keep the name unique; GetName then returns the name with the
    // number.
    void PutName(const Zelk::CString& name);
    // For example "Model", "Model.Object", "Model.Object.kine.local.posx" or
    // "Model.Object.Property".
    Zelk::CString GetFullName() const;
    // The result is empty if there is no parent. An object directly under the scene root has no
    // parent.
    ZKObject GetParent() const;
};

namespace Zelk {

class ZELK_API ProjectItem : public ZKObject {
  public:
    using ZKObject::ZKObject;

    // The model that the item belongs to. A model belongs to itself. An object that is in no model
    // belongs to the scene root.
    Model GetModel() const;
    // The item's parameters; find one with CRefArray::GetItem.
    CRefArray GetParameters() const;
    // Sets the parameter called `name`. `time` is in frames, or is kCurrentTime.
    CStatus PutParameterValue(const CString& name, double value, double time);
};

}  // namespace Zelk
