#include "export/json_scene.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "export/object_types.h"
#include "headless/text.h"
#include "text/byte_sink.h"
#include "text/json_text.h"

namespace exporters {
namespace {

using headless::Object;
using headless::ObjectType;

class SceneWriter {
  public:
    SceneWriter(text::ByteSink& out, const headless::Scene& scene, const Progress& progress)
        : out_(out), scene_(scene), progress_(progress), curveCount_(CountCurves(scene)) {}

    void Write() {
        line_ = "\"scene\": [";
        bool first = true;
        for (const Object* object : scene_.Objects()) {
            line_ += first ? "\n  " : ",\n  ";
            first = false;
            WriteObject(*object);
        }
        line_ += first ? "]\n" : "\n]\n";
        Flush();
    }

  private:
    // Counts the curves of all actions. They take most of the time.
    static std::size_t CountCurves(const headless::Scene& scene) {
        std::size_t count = 0;
        for (const Object* model : scene.Models())
            for (const auto& action : model->modelData->actions)
                for (const headless::ActionItem& item : action->items)
                    count += item.IsCurve() ? 1 : 0;
        return count;
    }

    // Writes the text of line_ and empties it.
    void Flush() {
        out_.Write(line_);
        line_.clear();
    }

    void AppendString(const Zelk::CString& text) {
        text::AppendJsonString(line_, headless::View(text));
    }

    // Appends an array to line_. `append(element)` appends the text of an element.
    template <class Range, class Append>
    void AppendList(const Range& range, Append append) {
        line_ += '[';
        bool first = true;
        for (const auto& element : range) {
            if (!first) line_ += ", ";
            first = false;
            append(element);
        }
        line_ += ']';
    }

    void WriteObject(const Object& object) {
        line_ += R"({"name": )";
        AppendString(object.name);
        line_ += R"(, "fullName": )";
        AppendString(scene_.FullName(object.id));
        line_ += R"(, "type": ")";
        line_ += TypeName(object.type);
        line_ += R"(", "parent": )";
        if (object.parent)
            AppendString(scene_.FullName(object.parent->id));
        else
            line_ += "null";
        AppendLocal(object);
        line_ += ", \"properties\": ";
        AppendList(object.Properties(),
                   [&](const auto& property) { AppendString(property->name); });
        if (object.modelData) WriteModel(*object.modelData);
        line_ += '}';
        Flush();
    }

    void AppendLocal(const Object& object) {
        static constexpr std::string_view kNames[] = {"posx", "posy", "posz",
                                                      "rotx", "roty", "rotz"};
        line_ += ", \"local\": {";
        for (std::size_t index = 0; index < object.local.size(); ++index) {
            line_ += index == 0 ? "\"" : ", \"";
            line_ += kNames[index];
            line_ += "\": ";
            text::AppendJsonNumber(line_, object.local[index]);
        }
        line_ += '}';
        if (object.type == ObjectType::ChainBone) {
            line_ += ", \"length\": ";
            text::AppendJsonNumber(line_, object.length);
        }
    }

    void WriteModel(const headless::ModelData& model) {
        line_ += ",\n   \"actions\": [";
        bool first = true;
        for (const auto& action : model.actions) {
            line_ += first ? "\n     " : ",\n     ";
            first = false;
            WriteAction(*action);
        }
        line_ += "],\n   \"groups\": ";
        AppendList(model.groups, [&](const auto& group) { AppendGroup(*group); });
        line_ += ",\n   \"clips\": ";
        AppendList(model.clips, [&](const headless::Clip& clip) {
            line_ += R"({"name": )";
            AppendString(clip.name);
            line_ += ", \"source\": ";
            AppendString(scene_.FullName(clip.source));
            line_ += '}';
        });
    }

    void AppendGroup(const headless::Group& group) {
        line_ += R"({"name": )";
        AppendString(group.name);
        line_ += ", \"members\": ";
        AppendList(group.members, [&](std::uint32_t id) { AppendString(scene_.FullName(id)); });
        line_ += '}';
    }

    void WriteAction(const headless::ActionSource& action) {
        line_ += R"({"name": )";
        AppendString(action.name);
        line_ += ", \"animEnd\": ";
        text::AppendJsonNumber(line_, action.animEnd);
        line_ += ", \"items\": [";
        bool first = true;
        for (const headless::ActionItem& item : action.items) {
            line_ += first ? "\n       " : ",\n       ";
            first = false;
            WriteItem(item);
        }
        line_ += "]}";
    }

    void WriteItem(const headless::ActionItem& item) {
        line_ += "{\"target\": ";
        AppendString(item.Target());
        line_ += item.active ? ", \"active\": true" : ", \"active\": false";
        if (item.IsCurve()) {
            progress_.Report(writtenCurves_++, curveCount_);
            line_ += ", \"interpolation\": " + std::to_string(item.GetCurve().interpolation);
            line_ += ", \"times\": ";
            WriteTimes(item.GetCurve().keys.times);
            line_ += ", \"values\": ";
            if (item.GetCurve().keys.values)
                WriteNumbers(*item.GetCurve().keys.values);
            else
                line_ += "[]";
        } else {
            line_ += ", \"value\": ";
            text::AppendJsonNumber(line_, item.Value());
        }
        line_ += '}';
        Flush();
    }

    // Most curves of a motion share one array of times. The text of the array is therefore kept for
    // the next curve.
    void WriteTimes(const std::shared_ptr<const headless::NumberArray>& times) {
        if (!times) {
            line_ += "[]";
            return;
        }
        if (times != lastTimes_) {
            lastTimes_ = times;
            timesText_.clear();
            AppendNumbers(timesText_, *times, [] {});
        }
        Flush();
        out_.Write(timesText_);
    }

    // Writes the text in parts, so that a long array needs little memory.
    void WriteNumbers(const headless::NumberArray& numbers) {
        AppendNumbers(line_, numbers, [&] {
            if (line_.size() > kLongLine) Flush();
        });
    }

    template <class AfterEach>
    static void AppendNumbers(std::string& text, const headless::NumberArray& numbers,
                              AfterEach after) {
        text += '[';
        bool first = true;
        for (const double number : numbers) {
            if (!first) text += ',';
            first = false;
            text::AppendJsonNumber(text, number);
            after();
        }
        text += ']';
    }

    static constexpr std::size_t kLongLine = 1 << 14;  // bytes

    text::ByteSink& out_;
    const headless::Scene& scene_;
    const Progress& progress_;
    std::size_t curveCount_;
    std::size_t writtenCurves_ = 0;
    std::string line_;
    std::shared_ptr<const headless::NumberArray> lastTimes_;
    std::string timesText_;
};

}  // namespace

void WriteJsonScene(text::ByteSink& out, const headless::Scene& scene, const Progress& progress) {
    SceneWriter(out, scene, progress).Write();
}

}  // namespace exporters
