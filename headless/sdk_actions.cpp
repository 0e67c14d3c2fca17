#include <utility>

#include "headless/operations.h"
#include "headless/session_state.h"
#include "host/action.h"

namespace Zelk {

using headless::ActionItem;
using headless::Editor;
using headless::Fails;
using headless::Operation;
using headless::Referent;

namespace {

AnimationSourceItem Append(const CRef& action, const CString& target, ActionItem item) {
    headless::SceneEditor editor = Editor();
    const Referent referent = editor.Resolve(action);
    if (referent.kind != Referent::Kind::Action || target.IsEmpty()) return AnimationSourceItem();
    const std::uint32_t index = editor.AddItem(*referent.action, target, std::move(item));
    return AnimationSourceItem(CRef(action.Object(), headless::part::kFirstItem + index));
}

}  // namespace

AnimationSourceItem ActionSource::AddSourceItem(const CString& target, const CRef& fcurve,
                                                bool active) {
    if (Fails(Operation::AddSourceItem)) return AnimationSourceItem();
    const Referent curve = Editor().Resolve(fcurve);
    if (curve.kind != Referent::Kind::Curve) return AnimationSourceItem();
    // The copy of the curve shares the curve's arrays of keys, because these arrays never change.
    ActionItem item(
        std::make_unique<const headless::Curve>(curve.property->curves[curve.index].curve));
    item.active = active;
    return Append(ref_, target, std::move(item));
}

AnimationSourceItem ActionSource::AddSourceItem(const CString& target, double value, bool active) {
    if (Fails(Operation::AddSourceItem)) return AnimationSourceItem();
    ActionItem item(value);
    item.active = active;
    return Append(ref_, target, std::move(item));
}

}  // namespace Zelk
