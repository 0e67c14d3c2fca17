// What all named things of the scene have in common.
#pragma once

#include "host/arrays.h"
#include "host/export.h"
#include "host/ref.h"
#include "host/status.h"
#include "host/string.h"

namespace Zelk {
class Model;
}

// Anything with a name. Stands outside the namespace, as in the host's own headers.
class ZELK_API ZKObject : public Zelk::CBase {
  public:
    using Zelk::CBase::CBase;

    Zelk::CString GetName() const;
    // The host may alter the name to keep it unique; GetName tells what it became.
    void PutName(const Zelk::CString& name);
    // "Model", "Model.Object", "Model.Object.kine.local.posx", "Model.Object.Property".
    Zelk::CString GetFullName() const;
    // Empty for what stands under nothing.
    ZKObject GetParent() const;
};

namespace Zelk {

class ZELK_API ProjectItem : public ZKObject {
  public:
    using ZKObject::ZKObject;

    // The model this belongs to; a model belongs to itself.
    Model GetModel() const;
    // The item's parameters; find one with CRefArray::GetItem.
    CRefArray GetParameters() const;
    // Sets the parameter of that name at that time.
    CStatus PutParameterValue(const CString& name, double value, double time);
};

}  // namespace Zelk
