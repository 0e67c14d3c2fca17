#pragma once

#include "host/export.h"
#include "host/object.h"
#include "host/parameter.h"

namespace Zelk {

// One entry of an action source: a target parameter with a static value or with an fcurve's keys.
class ZELK_API AnimationSourceItem : public CBase {
  public:
    using CBase::CBase;
};

// A set of values and curves for the parameters of a model. Has the parameter "AnimEnd" (seconds).
class ZELK_API ActionSource : public ProjectItem {
  public:
    using ProjectItem::ProjectItem;

    // `target` is the parameter's full name without the model's name and the dot after it. The keys
    // are taken as the curve holds them now. The item is empty where the host did not make it.
    AnimationSourceItem AddSourceItem(const CString& target, const CRef& fcurve, bool active);
    AnimationSourceItem AddSourceItem(const CString& target, double value, bool active);
};

class ZELK_API Group : public ProjectItem {
  public:
    using ProjectItem::ProjectItem;
};

}  // namespace Zelk
