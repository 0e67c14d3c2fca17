// Sets keys, adds items to actions, creates clips and applies actions.
#include <cstddef>
#include <cstring>
#include <iterator>
#include <utility>

#include "headless/driven.h"
#include "headless/scene_editor.h"
#include "headless/target.h"

namespace headless {

namespace {

using Values = std::vector<double>;

// An iterator over host values that returns each of them as a double. It claims to be a random
// access iterator, so that std::vector knows the number of values and allocates memory only once.
class Numbers {
  public:
    using iterator_category = std::random_access_iterator_tag;
    using value_type = double;
    using difference_type = std::ptrdiff_t;
    using pointer = const double*;
    using reference = double;

    explicit Numbers(const Zelk::CValue* value) : value_(value) {}
    double operator*() const { return value_->AsDouble(); }
    Numbers& operator++() {
        ++value_;
        return *this;
    }
    difference_type operator-(const Numbers& other) const { return value_ - other.value_; }
    bool operator==(const Numbers&) const = default;

  private:
    const Zelk::CValue* value_;
};

// Returns the kept numbers, followed by the new ones. Memory is allocated only once, because
// motions are long.
template <class Iterator>
std::shared_ptr<const Values> Joined(const Values* kept, Iterator begin, Iterator end) {
    if (kept == nullptr || kept->empty()) return std::make_shared<const Values>(begin, end);
    Values joined;
    joined.reserve(kept->size() + static_cast<std::size_t>(end - begin));
    joined.insert(joined.end(), kept->begin(), kept->end());
    for (; !(begin == end); ++begin)
        joined.push_back(*begin);
    return std::make_shared<const Values>(std::move(joined));
}

// Compares the bits, so that NaN equals NaN.
bool SameTimes(const Values& stored, const Zelk::CTimeArray& times) {
    const std::uint32_t count = times.GetCount();
    return stored.size() == count &&
           (count == 0 || std::memcmp(stored.data(), &times[0], count * sizeof(double)) == 0);
}

}  // namespace

Zelk::CStatus SceneEditor::SetKeys(Curve& curve, const Zelk::CTimeArray& times,
                                   const Zelk::CValueArray& values, bool keepExisting) {
    const std::uint32_t count = times.GetCount();
    if (values.GetCount() != count) return Zelk::status::kInvalidArgument;
    const Keys kept = keepExisting ? curve.keys : Keys();
    const double* const firstTime = count == 0 ? nullptr : &times[0];
    const Zelk::CValue* const firstValue = count == 0 ? nullptr : &values[0];

    Keys keys;
    keys.times = records_.lastTimes.lock();
    if (kept.Count() != 0 || !keys.times || !SameTimes(*keys.times, times))
        keys.times = Joined(kept.times.get(), firstTime, firstTime + count);
    keys.values = Joined(kept.values.get(), Numbers(firstValue), Numbers(firstValue + count));

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
