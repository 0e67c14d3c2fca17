// Sets keys, adds items to actions, creates clips and applies actions.
#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

#include "headless/driven.h"
#include "headless/scene_editor.h"
#include "headless/target.h"

namespace headless {

namespace {

double NumberIn(double time) {
    return time;
}
double NumberIn(const Zelk::CValue& value) {
    return value.AsDouble();
}

// Returns the kept numbers, followed by the added ones. If there is nothing to keep, and the memory
// of the added numbers is shared, they are not copied.
template <class Array>
std::shared_ptr<const NumberArray> Joined(const NumberArray* kept, const Array& added) {
    const std::uint32_t count = added.GetCount();
    const std::size_t before = kept == nullptr ? 0 : kept->size();
    if (before == 0 && added.Shared())
        return std::make_shared<const NumberArray>(added.Shared(), count);
    const std::shared_ptr<double[]> joined(new double[before + count]);
    if (before != 0) std::copy(kept->begin(), kept->end(), joined.get());
    for (std::uint32_t index = 0; index < count; ++index)
        joined.get()[before + index] = NumberIn(added[index]);
    return std::make_shared<const NumberArray>(joined, before + count);
}

// Compares the bits, so that NaN equals NaN.
bool SameTimes(const NumberArray& stored, const Zelk::CTimeArray& times) {
    const std::uint32_t count = times.GetCount();
    return stored.size() == count &&
           (count == 0 || stored.data() == &times[0] ||
            std::memcmp(stored.data(), &times[0], count * sizeof(double)) == 0);
}

}  // namespace

Zelk::CStatus SceneEditor::SetKeys(Curve& curve, const Zelk::CTimeArray& times,
                                   const Zelk::CValueArray& values, bool keepExisting) {
    const std::uint32_t count = times.GetCount();
    if (values.GetCount() != count) return Zelk::status::kInvalidArgument;
    const Keys kept = keepExisting ? curve.keys : Keys();

    Keys keys;
    keys.times = records_.lastTimes.lock();
    if (kept.Count() != 0 || !keys.times || !SameTimes(*keys.times, times))
        keys.times = Joined(kept.times.get(), times);
    keys.values = Joined(kept.values.get(), values);

    records_.lastTimes = keys.times;
    curve.keys = std::move(keys);
    return Zelk::status::kOk;
}

// The new item shares the text of the object's name with the item before it, or with the object
// itself, if their texts are equal. A target does not change when its object is renamed later.
std::uint32_t SceneEditor::AddItem(ActionSource& action, const Zelk::CString& target,
                                   ActionItem item) {
    const SplitTarget split = Split(View(target));
    item.channel = split.channel;
    if (!split.channel) {
        item.object = target;
    } else if (!action.items.empty() && View(action.items.back().object) == split.object) {
        item.object = action.items.back().object;
    } else {
        const Object* const found = scene_.FindIn(*action.owner, split.object);
        item.object = found != nullptr && View(found->name) == split.object
                          ? found->name
                          : Text(std::wstring(split.object));
    }
    action.items.push_back(std::move(item));
    return static_cast<std::uint32_t>(action.items.size() - 1);
}

void SceneEditor::CreateClip(Node& model, const ActionSource& motion) {
    ReserveRoom(model.modelData->clips);
    const Zelk::CString name =
        ReserveName(model.modelData->clipNames, motion.name + L"_Clip", kActionName, motion.id);
    model.modelData->clips.push_back({name, motion.id});
}

void SceneEditor::Apply(ActionSource& action, Node& owner, Node& model) {
    bool hasCurves = false;
    // Items of one object mostly follow each other and share the text of its name. So the object is
    // looked up only for an item that does not share this text with the item before it.
    const wchar_t* name = nullptr;
    const Object* object = nullptr;
    for (const ActionItem& item : action.items) {
        if (!item.active) continue;
        if (item.IsCurve()) {
            hasCurves = true;
            continue;
        }
        if (!item.channel) continue;
        if (name == nullptr || item.object.GetWideString() != name) {
            name = item.object.GetWideString();
            object = scene_.FindIn(model, View(item.object));
        }
        const Scene::Target target = Scene::TargetOn(object, *item.channel);
        if (target.object == nullptr) continue;
        const Object* const driven = DrivenBy(*target.object, target.channel);
        if (driven != nullptr)
            ChangeChannel(*records_.FindNode(driven->id), target.channel, item.Value());
    }
    RefreshEffectors();
    if (!hasCurves) return;
    ForgetAttached(model);
    if (&owner != &model) records_.attachedElsewhere[&action].push_back(&model);
    model.modelData->attached = &action;
}

}  // namespace headless
