#include "tests/headless/scene_text.h"

#include <ios>
#include <sstream>

#include "tests/headless/host_scene.h"

namespace host_test {

namespace {

using headless::Object;

class Writer {
  public:
    Writer() { out_ << std::hexfloat; }

    std::wstring Text() const { return out_.str(); }

    void Write(const Object& object) {
        out_ << object.id << L' ' << static_cast<int>(object.type) << L' ' << Wide(object.name)
             << L" under " << (object.parent == nullptr ? 0 : object.parent->id) << L" in "
             << (object.model == nullptr ? 0 : object.model->id) << L" length " << object.length;
        for (const double value : object.local)
            out_ << L' ' << value;
        if (object.chainData)
            for (const double value : object.chainData->effectorAngle)
                out_ << L' ' << value;
        if (object.groups)
            for (const std::uint32_t group : *object.groups)
                out_ << L" group " << group;
        out_ << L'\n';
        for (const auto& property : object.Properties())
            Write(*property);
        if (object.modelData) Write(*object.modelData);
    }

  private:
    void Write(const headless::Property& property) {
        out_ << L"  property " << property.id << L' ' << Wide(property.name) << L'\n';
        for (const auto& parameter : property.curves) {
            out_ << L"    " << Wide(parameter.name);
            Write(parameter.curve);
        }
    }

    void Write(const headless::Curve& curve) {
        out_ << L" interpolation " << curve.interpolation;
        for (std::size_t key = 0; key < curve.keys.Count(); ++key)
            out_ << L" (" << (*curve.keys.times)[key] << L' ' << (*curve.keys.values)[key] << L')';
        out_ << L'\n';
    }

    void Write(const headless::ModelData& model) {
        for (const auto& action : model.actions) {
            out_ << L"  action " << action->id << L' ' << Wide(action->name) << L" end "
                 << action->animEnd << (action.get() == model.attached ? L" attached\n" : L"\n");
            for (const headless::ActionItem& item : action->items) {
                out_ << L"    " << Wide(item.Target()) << L' ' << item.active << L' '
                     << item.Value();
                if (item.IsCurve())
                    Write(item.GetCurve());
                else
                    out_ << L'\n';
            }
        }
        for (const auto& group : model.groups) {
            out_ << L"  group " << group->id << L' ' << Wide(group->name);
            for (const std::uint32_t member : group->members)
                out_ << L' ' << member;
            out_ << L'\n';
        }
        for (const headless::Clip& clip : model.clips)
            out_ << L"  clip " << Wide(clip.name) << L' ' << clip.source << L'\n';
    }

    std::wostringstream out_;
};

}  // namespace

std::wstring SceneText() {
    Writer writer;
    for (const Object* object : Scene().Objects())
        writer.Write(*object);
    return writer.Text();
}

std::wstring SessionText() {
    const headless::Session& session = headless::Session::Current();
    std::wostringstream out;
    for (const headless::LogLine& line : session.Log())
        out << line.severity.value_or(0) << L' ' << Wide(line.text) << L'\n';
    for (const headless::BarEvent& event : session.Bar())
        out << static_cast<int>(event.kind) << L' ' << event.number << L' ' << Wide(event.caption)
            << L'\n';
    out << session.Commands().size() << L" commands\n";
    return out.str();
}

}  // namespace host_test
