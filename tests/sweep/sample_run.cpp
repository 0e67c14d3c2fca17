#include "tests/sweep/sample_run.h"

#include <bit>
#include <cstdint>
#include <optional>
#include <string_view>

#include "headless/session.h"
#include "plugin/contract.h"
#include "tests/support/core/session_text.h"

namespace sweep {
namespace {

using plugin_test::Arguments;

Arguments ArgumentsOf(const Sample& sample, const std::wstring& first, const std::wstring& second) {
    Arguments arguments;
    const auto set = [&](std::size_t index, bool flag) {
        arguments.Word(index, plugin::BooleanWord(flag));
    };
    if (sample.isAcclaim) {
        using namespace plugin::acclaim;
        arguments.Text(kSkeletonFile, first).Text(kMotionFile, second);
        set(kApplyLimits, sample.limits);
        set(kOverrideLength, sample.length != 0.0);
        arguments.Real(kLengthMultiplier, sample.length);
        set(kAddClip, sample.clip);
        set(kUseNulls, sample.nulls);
        set(kChainFromParentJoint, sample.chainFromParent);
        set(kEffectorToLastBone, sample.effectorToLastBone);
        set(kCreateGroup, sample.group);
    } else {
        using namespace plugin::biovision;
        arguments.Text(kFile, first);
        set(kAddClip, sample.clip);
        set(kUseNulls, sample.nulls);
        set(kChainFromParentJoint, sample.chainFromParent);
        set(kEffectorToLastBone, sample.effectorToLastBone);
        set(kCreateGroup, sample.group);
    }
    return arguments;
}

class RecordText {
  public:
    std::string Make() {
        for (const auto& lines :
             {support::LogLines(), support::BarLines(), support::CommandLines()})
            for (const std::string& line : lines)
                Add(line);
        for (const headless::Object* object : scene_.Objects())
            AddObject(*object);
        return std::move(text_);
    }

  private:
    void Add(const std::string& line) { text_ += line + '\n'; }
    std::string Name(std::uint32_t id) { return support::Utf8(scene_.FullName(id)); }
    // The number's bits as an integer, which no locale changes.
    static std::string Number(double value) {
        return ' ' + std::to_string(std::bit_cast<std::uint64_t>(value));
    }

    void AddObject(const headless::Object& object) {
        std::string line = Name(object.id) + " type " +
                           std::to_string(static_cast<int>(object.type)) + " under " +
                           (object.parent != nullptr ? Name(object.parent->id) : "") + ":";
        for (const double component : object.local)
            line += Number(component);
        Add(line + Number(object.length));
        for (const auto& property : object.Properties())
            Add(" property " + support::Utf8(property->name));
        if (object.modelData) AddModel(*object.modelData);
    }

    void AddModel(const headless::ModelData& model) {
        for (const auto& action : model.actions) {
            Add(" action " + Name(action->id) + Number(action->animEnd));
            for (const headless::ActionItem& item : action->items)
                AddItem(item);
        }
        for (const auto& group : model.groups) {
            Add(" group " + Name(group->id));
            for (const std::uint32_t member : group->members)
                Add("  " + Name(member));
        }
        for (const headless::Clip& clip : model.clips)
            Add(" clip " + support::Utf8(clip.name) + " of " + Name(clip.source));
    }

    void AddItem(const headless::ActionItem& item) {
        std::string line = "  " + support::Utf8(item.Target()) + (item.active ? "" : " off");
        if (!item.IsCurve()) return Add(line + Number(item.Value()));
        line += " curve " + std::to_string(item.GetCurve().interpolation);
        for (std::size_t i = 0; i < item.GetCurve().keys.Count(); ++i)
            line += Number((*item.GetCurve().keys.times)[i]) +
                    Number((*item.GetCurve().keys.values)[i]);
        Add(line);
    }

    const headless::Scene& scene_ = headless::Session::Current().GetScene();
    std::string text_;
};

// The message of an error line; empty for any other line.
std::optional<std::string> ErrorIn(const std::string& line) {
    for (const std::string_view opening : {"8: ERROR: ", "8: ERROR (LINE "}) {
        if (!line.starts_with(opening)) continue;
        if (opening.ends_with(": ")) return line.substr(opening.size());
        const std::size_t digits = line.find_first_not_of("0123456789", opening.size());
        if (digits > opening.size() && line.compare(digits, 3, "): ") == 0)
            return line.substr(digits + 3);
    }
    return std::nullopt;
}

bool IsSuccess(const Sample& sample, const std::string& line) {
    // A successful Acclaim import logs the documentation of the skeleton, which may be any text.
    if (sample.isAcclaim) return line.starts_with("8: ");
    return line.starts_with("8: Imported ") && line.ends_with("successfully");
}

}  // namespace

SampleRun::SampleRun(const Sample& sample) : sample_(sample) {
    Cut(sample.first.size(), sample.second.size());
}

void SampleRun::Cut(std::size_t first, std::size_t second) {
    const char* const name = sample_.isAcclaim ? "take.asf" : "take.bvh";
    const std::string firstPath = folder_.Write(name, sample_.first.substr(0, first));
    std::string secondPath;
    if (!sample_.second.empty())
        secondPath = folder_.Write("take_01.amc", sample_.second.substr(0, second));
    arguments_ = ArgumentsOf(sample_, plugin_test::Wide(firstPath), plugin_test::Wide(secondPath));
}

void SampleRun::Start() const {
    support::StartSession(true);
}

std::uint32_t SampleRun::Call() const {
    return plugin_test::Call(
        sample_.isAcclaim ? plugin::kAcclaimCommand : plugin::kBiovisionCommand, arguments_);
}

const void* SampleRun::PluginAddress() {
    return &plugin_test::Input();
}

std::string SampleRun::Record() {
    return RecordText().Make();
}

std::vector<std::string> LoggedErrors() {
    std::vector<std::string> errors;
    for (const std::string& line : support::LogLines()) {
        if (const std::optional<std::string> error = ErrorIn(line)) errors.push_back(*error);
    }
    return errors;
}

std::string LogProblem(const Sample& sample, bool lineLost) {
    std::vector<std::string> lines = support::LogLines();
    std::erase_if(lines, [](const std::string& line) {
        return line.starts_with("4: ") && line.ends_with(", ignoring...");
    });
    const std::string opening =
        sample.isAcclaim ? "-: Importing Acclaim Files..." : "-: Importing Biovision BVH File...";
    if (lines.empty()) return lineLost ? "" : "nothing was logged";
    if (lines.front() == opening)
        lines.erase(lines.begin());
    else if (!lineLost)
        return "the import was not announced";
    std::size_t errors = 0;
    std::size_t successes = 0;
    for (const std::string& line : lines) {
        if (ErrorIn(line))
            ++errors;
        else if (IsSuccess(sample, line))
            ++successes;
        else
            return "a strange line: " + line;
    }
    if (errors > 1 || successes > 1) return "more than one outcome";
    if (errors + successes == 0 && !lineLost) return "no outcome";
    return "";
}

}  // namespace sweep
