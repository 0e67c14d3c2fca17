#include "tests/support/core/scene_check.h"

#include <optional>
#include <set>
#include <unordered_map>

#include "headless/session.h"
#include "tests/support/core/session_text.h"

namespace support {

namespace {

using headless::ActionSource;
using headless::Object;

class SceneCheck {
  public:
    std::vector<std::string> Run(bool imported) {
        for (const Object* object : scene_.Objects()) {
            CheckName(*object);
            CheckLinks(*object);
            if (imported) CheckProperties(*object);
            if (object->modelData) CheckModel(*object);
        }
        if (!BarIsHidden()) Report("the bar is still visible");
        return problems_;
    }

  private:
    void Report(const std::string& problem) { problems_.push_back(problem); }

    // Names are unique among the models, and among the objects of a model together with the model.
    // An object that the host makes for a chain has no name until it is given one.
    void CheckName(const Object& object) {
        const std::string name = Utf8(object.name);
        if (name.empty() && object.chainRoot != nullptr) return;
        if (object.type == headless::ObjectType::Model && !models_.insert(name).second)
            Report("two models are called " + name);
        if (!names_[object.model].insert(name).second)
            Report("two objects of a model are called " + name);
    }

    void CheckLinks(const Object& object) {
        const Object* previous = nullptr;
        for (const Object* child = object.firstChild; child != nullptr;
             child = child->nextSibling) {
            if (child->parent != &object || child->previousSibling != previous)
                Report("a child of " + Utf8(object.name) + " is linked wrongly");
            previous = child;
        }
        if (object.lastChild != previous)
            Report("the last child of " + Utf8(object.name) + " is wrong");
    }

    void CheckProperties(const Object& object) {
        for (const auto& property : object.Properties())
            if (Utf8(property->name).starts_with("FcurvePset"))
                Report("a scratch property is left on " + Utf8(object.name));
    }

    void CheckModel(const Object& model) {
        for (const auto& action : model.modelData->actions)
            CheckAction(*action);
        for (const auto& group : model.modelData->groups)
            for (const std::uint32_t member : group->members)
                if (scene_.FindObject(member) == nullptr)
                    Report("a member of " + Utf8(group->name) + " does not exist");
        for (const auto& clip : model.modelData->clips)
            if (scene_.FindAction(clip.source) == nullptr)
                Report("the source of " + Utf8(clip.name) + " does not exist");
    }

    void CheckAction(const ActionSource& action) {
        std::optional<std::size_t> length;
        for (const headless::ActionItem& item : action.items) {
            if (!item.IsCurve()) continue;
            const headless::Keys& keys = item.GetCurve().keys;
            if (length.value_or(keys.Count()) != keys.Count())
                Report(Utf8(action.name) + " holds curves of different lengths");
            length = keys.Count();
            if (keys.Count() != (keys.values ? keys.values->size() : 0))
                Report(Utf8(item.Target()) + " has more times than values or fewer");
            for (std::size_t i = 1; i < keys.Count(); ++i)
                if (!((*keys.times)[i - 1] < (*keys.times)[i]))
                    return Report("the key times of " + Utf8(item.Target()) + " do not rise");
        }
    }

    const headless::Scene& scene_ = headless::Session::Current().GetScene();
    std::vector<std::string> problems_;
    std::set<std::string> models_;
    std::unordered_map<const Object*, std::set<std::string>> names_;
};

}  // namespace

std::vector<std::string> SceneProblems(bool imported) {
    return SceneCheck().Run(imported);
}

}  // namespace support
