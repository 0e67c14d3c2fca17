#pragma once

#include "host/export.h"
#include "host/object.h"
#include "host/parameter.h"

namespace Zelk {

// One item of an action: a target parameter with a static value, or with the keys of an fcurve.
class ZELK_API AnimationSourceItem : public CBase {
  public:
    using CBase::CBase;
};

// An action: a set of values and curves for the parameters of a model. Its own parameter "AnimEnd"
// is its length in seconds.
class ZELK_API ActionSource : public ProjectItem {
  public:
    using ProjectItem::ProjectItem;

    // `target` is the parameter's full name without the model's name and the dot after it. The item
    // keeps the keys that the curve has when this function is called; later changes of the curve do
    // not change the item. If `active` is false, the item has no effect. If the host could not add
    // an item, the result is empty.
    AnimationSourceItem AddSourceItem(const CString& target, const CRef& fcurve, bool active);
    AnimationSourceItem AddSourceItem(const CString& target, double value, bool active);
};

// A named set of objects. A model owns it.
class ZELK_API Group : public ProjectItem {
  public:
    using ProjectItem::ProjectItem;
};

}  // namespace Zelk
