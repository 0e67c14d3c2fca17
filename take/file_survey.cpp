#include "take/file_survey.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "survey/finding_text.h"
#include "text/path_text.h"
#include "text/storage.h"

namespace take {
namespace {

constexpr double kCmuLengthMultiplier = 0.056444;  // inches, and the archive's own 0.45, to metres
constexpr double kCmuFramesPerSecond = 120.0;

survey::Preset PresetOf(const Request& request) {
    switch (request.preset) {
        case Preset::Cmu:
            return survey::Preset::Cmu;
        case Preset::None:
            return survey::Preset::None;
        case Preset::Auto:
            break;
    }
    return survey::Preset::Auto;
}

survey::Options OptionsOf(const Request& request) {
    survey::Options options;
    options.purpose = survey::Purpose::Import;
    options.bones = !request.useNulls;
    options.encoding = request.encoding;
    options.framesPerSecond = request.framesPerSecond;
    options.lengthMultiplier = request.lengthMultiplier;
    options.preset = PresetOf(request);
    return options;
}

// The text of an input, from memory or from the storage.
class InputText {
  public:
    InputText(const InputFile& file, text::Storage& storage)
        : name_(text::NamePart(file.path)), content_(file.content ? &*file.content : nullptr) {
        if (!content_) stored_ = storage.Read(file.path);
    }

    // Followed by a NUL byte.
    std::string_view Text() const { return content_ ? *content_ : stored_->Text(); }
    std::string Problem() const { return content_ ? std::string() : stored_->Problem(); }
    survey::AcclaimFile AsAcclaim() const { return {Text(), name_}; }

  private:
    std::string name_;
    const std::string* content_;
    std::unique_ptr<text::StoredText> stored_;
};

// Gathers what the surveys of the files found.
class Gathering {
  public:
    explicit Gathering(const Request& request) : request_(request) {
        result_.framesPerSecond = request.framesPerSecond;
        result_.lengthMultiplier = request.lengthMultiplier;
    }

    // Whether the file could be read; otherwise that is a finding.
    bool IsReadable(const InputFile& file, const InputText& text) {
        if (text.Problem().empty()) return true;
        Add(file, {survey::UnreadableFinding(text.Problem())});
        return false;
    }

    void Add(const InputFile& file, std::vector<survey::Finding> findings) {
        for (const survey::Finding& finding : findings)
            result_.isRefused |= finding.severity == survey::Severity::Error ||
                                 (request_.strict && finding.severity == survey::Severity::Warning);
        result_.findings.push_back({file.path, std::move(findings)});
    }

    // A rate or a length of the user's own is already in the options that the survey got.
    void SetRate(std::optional<double> framesPerSecond) {
        if (framesPerSecond && !result_.framesPerSecond) result_.framesPerSecond = framesPerSecond;
    }
    void SetLengths(const survey::AcclaimSurvey& acclaim) {
        if (acclaim.lengthMultiplier) result_.lengthMultiplier = acclaim.lengthMultiplier;
        result_.multiplied = acclaim.multiplied;
    }

    FileSurvey Finish(survey::FileSurvey* file = nullptr, survey::FileSurvey* motion = nullptr) {
        if (result_.isRefused) return std::move(result_);
        if (file) result_.file = std::move(file->mended);
        if (motion) result_.motion = std::move(motion->mended);
        return std::move(result_);
    }

  private:
    const Request& request_;
    FileSurvey result_;
};

FileSurvey SurveyBiovision(const Request& request, text::Storage& storage) {
    Gathering gathering(request);
    const InputText file(request.file, storage);
    if (!gathering.IsReadable(request.file, file)) return gathering.Finish();
    survey::BvhSurvey surveyed = survey::SurveyBvh(file.Text(), OptionsOf(request));
    gathering.Add(request.file, std::move(surveyed.findings));
    gathering.SetRate(surveyed.framesPerSecond);
    return gathering.Finish(&surveyed);
}

FileSurvey SurveyAcclaim(const Request& request, text::Storage& storage) {
    Gathering gathering(request);
    const InputText skeleton(request.file, storage);
    std::optional<InputText> motion;
    if (request.motion) motion.emplace(*request.motion, storage);
    const bool isSkeletonReadable = gathering.IsReadable(request.file, skeleton);
    const bool isMotionReadable = !motion || gathering.IsReadable(*request.motion, *motion);
    if (!isSkeletonReadable || !isMotionReadable) return gathering.Finish();

    std::vector<survey::AcclaimFile> motions;
    if (motion) motions.push_back(motion->AsAcclaim());
    survey::AcclaimSurvey surveyed =
        survey::SurveyAcclaim(skeleton.AsAcclaim(), motions, OptionsOf(request));
    gathering.Add(request.file, std::move(surveyed.skeleton.findings));
    gathering.SetLengths(surveyed);
    if (surveyed.motions.empty()) return gathering.Finish(&surveyed.skeleton);
    survey::AmcSurvey& moved = surveyed.motions.front();
    gathering.Add(*request.motion, std::move(moved.findings));
    gathering.SetRate(moved.framesPerSecond);
    return gathering.Finish(&surveyed.skeleton, &moved);
}

FileSurvey WithoutSurvey(const Request& request) {
    FileSurvey result;
    result.framesPerSecond = request.framesPerSecond;
    result.lengthMultiplier = request.lengthMultiplier;
    if (request.preset != Preset::Cmu) return result;
    if (!result.lengthMultiplier) result.lengthMultiplier = kCmuLengthMultiplier;
    if (!result.framesPerSecond) result.framesPerSecond = kCmuFramesPerSecond;
    return result;
}

}  // namespace

FileSurvey SurveyFiles(const Request& request, text::Storage& storage) {
    if (request.asIs) return WithoutSurvey(request);
    static constexpr FileSurvey (*kSurveys[kFormatCount])(const Request&, text::Storage&) = {
        SurveyBiovision, SurveyAcclaim};
    return kSurveys[static_cast<std::size_t>(request.format)](request, storage);
}

}  // namespace take
