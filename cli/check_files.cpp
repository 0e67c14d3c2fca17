#include "cli/check_files.h"

#include <deque>
#include <memory>
#include <utility>

#include "cli/standard_input.h"
#include "files/system_storage.h"
#include "pairing/capture_kind.h"
#include "survey/finding_text.h"
#include "take/input_text.h"

namespace cli {
namespace {

using pairing::CaptureKind;

// Files that are surveyed together: a single file, or a skeleton and its motions.
class Group {
  public:
    void Add(const CheckInput& input) {
        CheckedFile checked;
        checked.input = &input;
        checked_.push_back(std::move(checked));
    }

    // Each call returns the next file, in the order in which the files were added. The first call
    // surveys all of them.
    const CheckedFile& Next(const survey::Options& options) {
        if (next_ == 0) Survey(options);
        return checked_[next_++];
    }

  private:
    static survey::AcclaimFile AcclaimFileOf(const CheckedFile& checked) {
        return {checked.text, take::PlainName(checked.input->file)};
    }

    bool IsRead(std::size_t index) const { return files_[index].Problem().empty(); }

    void Survey(const survey::Options& options) {
        for (CheckedFile& checked : checked_) {
            files_.emplace_back(checked.input->file, storage_);
            checked.text = files_.back().Text();
            if (!files_.back().Problem().empty())
                checked.survey.findings = {survey::UnreadableFinding(files_.back().Problem())};
        }
        const bool hasSkeleton = checked_.front().input->kind == CaptureKind::Skeleton;
        if (hasSkeleton && IsRead(0))
            SurveyPairs(options);
        else
            SurveyEachAlone(options);
    }

    void SurveyPairs(const survey::Options& options) {
        std::vector<survey::AcclaimFile> motions;
        std::vector<std::size_t> indexes;
        for (std::size_t index = 1; index < checked_.size(); ++index) {
            if (!IsRead(index)) continue;
            motions.push_back(AcclaimFileOf(checked_[index]));
            indexes.push_back(index);
        }
        survey::AcclaimSurvey surveyed =
            survey::SurveyAcclaim(AcclaimFileOf(checked_.front()), motions, options);
        checked_.front().survey = std::move(surveyed.skeleton);
        for (std::size_t index = 0; index < indexes.size(); ++index)
            checked_[indexes[index]].survey = std::move(surveyed.motions[index]);
    }

    void SurveyEachAlone(const survey::Options& options) {
        for (std::size_t index = 0; index < checked_.size(); ++index) {
            if (!IsRead(index)) continue;
            CheckedFile& checked = checked_[index];
            if (checked.input->kind == CaptureKind::Biovision)
                checked.survey = survey::SurveyBvh(checked.text, options);
            else
                checked.survey = survey::SurveyAmcAlone(AcclaimFileOf(checked), options);
        }
    }

    files::SystemStorage storage_;
    std::deque<take::InputText> files_;  // the contents of the files in `checked_`, in its order
    std::vector<CheckedFile> checked_;
    std::size_t next_ = 0;  // the index in `checked_` of the file that Next returns next
};

// Returns one element for each file: the group that the file belongs to. An .amc belongs to the
// group of the last .asf before it on the command line, even if there are other files between them.
std::vector<std::shared_ptr<Group>> GroupsOf(const std::vector<CheckInput>& files) {
    std::vector<std::shared_ptr<Group>> groups;
    std::shared_ptr<Group> skeleton;
    for (const CheckInput& file : files) {
        const bool joins = file.kind == CaptureKind::Motion && skeleton;
        std::shared_ptr<Group> group = joins ? skeleton : std::make_shared<Group>();
        if (file.kind == CaptureKind::Skeleton) skeleton = group;
        group->Add(file);
        groups.push_back(std::move(group));
    }
    return groups;
}

}  // namespace

std::vector<CheckInput> InputsOf(const CheckRequest& request) {
    std::vector<CheckInput> inputs;
    for (const std::string& path : request.files) {
        // ParseArguments has checked that each path has the extension of a capture file, or that
        // --as was given for it, so the argument of value_or is never returned.
        const CaptureKind kind = (IsStandardInput(path) ? request.as : pairing::KindOf(path))
                                     .value_or(CaptureKind::Biovision);
        inputs.push_back({InputOf(path, kind), kind});
    }
    return inputs;
}

void CheckFiles(const std::vector<CheckInput>& files, const survey::Options& options,
                const std::function<void(const CheckedFile&)>& each) {
    // Each pointer is moved into `held`, so a group is freed as soon as `each` has returned for the
    // last file of the group.
    for (std::shared_ptr<Group>& group : GroupsOf(files)) {
        const std::shared_ptr<Group> held = std::move(group);
        each(held->Next(options));
    }
}

}  // namespace cli
