#include "take/file_survey.h"

#include <algorithm>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "survey/codes.h"
#include "survey/finding_text.h"
#include "text/path_text.h"
#include "text/storage.h"

namespace take {
namespace {

// Files of the CMU archive store lengths as inches times 0.45. This factor, 0.0254 / 0.45, converts
// them to metres.
constexpr double kCmuLengthMultiplier = 0.056444;
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

// The text of an input file. If the request does not hold the text, it is read from the storage.
class InputText {
  public:
    InputText(const InputFile& file, text::Storage& storage)
        : name_(text::NamePart(file.path)), content_(file.content ? &*file.content : nullptr) {
        if (!content_) stored_ = storage.Read(file.path);
    }

    // The file's text; a NUL byte follows it in memory.
    std::string_view Text() const { return content_ ? *content_ : stored_->Text(); }
    // Why the file cannot be read; empty if it can be read.
    std::string Problem() const { return content_ ? std::string() : stored_->Problem(); }
    survey::AcclaimFile AsAcclaim() const { return {Text(), name_}; }

  private:
    std::string name_;
    const std::string* content_;  // owned by the request; null if the text is in `stored_`
    std::unique_ptr<text::StoredText> stored_;  // null if the text is in `content_`
};

// Collects the results of one import's surveys.
class SurveyCollector {
  public:
    explicit SurveyCollector(const Request& request) : request_(request) {
        result_.framesPerSecond = request.framesPerSecond;
        result_.lengthMultiplier = request.lengthMultiplier;
        if (request.framesPerSecond) result_.rateOrigin = RateOrigin::Request;
    }

    // Returns whether the file could be read. If it could not, adds a finding that says why.
    bool CheckReadable(const InputFile& file, const InputText& text) {
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

    // Sets the rate that the survey found, unless the user requested one. `surveyed` is the survey
    // of the file with the motion. Its findings must not have been moved out of it.
    void SetRate(const survey::FileSurvey& surveyed, std::optional<double> framesPerSecond) {
        result_.statedRate = surveyed.facts.statedRate;
        if (request_.framesPerSecond) return;
        result_.framesPerSecond = framesPerSecond;
        if (surveyed.facts.statedRate) return;
        // Only Acclaim files have presets. If one gives the rate, the survey does not miss it.
        const bool isMissed = std::any_of(surveyed.findings.begin(), surveyed.findings.end(),
                                          [](const survey::Finding& finding) {
                                              return finding.code == survey::codes::kRateMissing;
                                          });
        const bool isPreset = request_.format == Format::Acclaim && !isMissed;
        result_.rateOrigin = isPreset ? RateOrigin::Preset : RateOrigin::Assumed;
    }
    // The survey's multiplier replaces the user's, because it already is the product of the user's
    // multiplier and `multiplied`.
    void SetLengths(const survey::AcclaimSurvey& acclaim) {
        if (acclaim.lengthMultiplier) result_.lengthMultiplier = acclaim.lengthMultiplier;
        result_.multiplied = acclaim.multiplied;
    }

    // Adds the mended texts, unless the files are refused, and returns the result. `file` and
    // `motion` are null if that file was not surveyed.
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
    SurveyCollector collector(request);
    const InputText file(request.file, storage);
    if (!collector.CheckReadable(request.file, file)) return collector.Finish();
    survey::BvhSurvey surveyed = survey::SurveyBvh(file.Text(), OptionsOf(request));
    collector.SetRate(surveyed, surveyed.framesPerSecond);
    collector.Add(request.file, std::move(surveyed.findings));
    return collector.Finish(&surveyed);
}

FileSurvey SurveyAcclaim(const Request& request, text::Storage& storage) {
    SurveyCollector collector(request);
    const InputText skeleton(request.file, storage);
    std::optional<InputText> motion;
    if (request.motion) motion.emplace(*request.motion, storage);
    const bool isSkeletonReadable = collector.CheckReadable(request.file, skeleton);
    const bool isMotionReadable = !motion || collector.CheckReadable(*request.motion, *motion);
    if (!isSkeletonReadable || !isMotionReadable) return collector.Finish();

    std::vector<survey::AcclaimFile> motions;
    if (motion) motions.push_back(motion->AsAcclaim());
    survey::AcclaimSurvey surveyed =
        survey::SurveyAcclaim(skeleton.AsAcclaim(), motions, OptionsOf(request));
    collector.Add(request.file, std::move(surveyed.skeleton.findings));
    collector.SetLengths(surveyed);
    if (surveyed.motions.empty()) return collector.Finish(&surveyed.skeleton);
    survey::AmcSurvey& surveyedMotion = surveyed.motions.front();
    collector.SetRate(surveyedMotion, surveyedMotion.framesPerSecond);
    collector.Add(*request.motion, std::move(surveyedMotion.findings));
    return collector.Finish(&surveyed.skeleton, &surveyedMotion);
}

FileSurvey WithoutSurvey(const Request& request) {
    FileSurvey result;
    result.framesPerSecond = request.framesPerSecond;
    result.lengthMultiplier = request.lengthMultiplier;
    if (request.framesPerSecond) result.rateOrigin = RateOrigin::Request;
    if (request.preset != Preset::Cmu) return result;
    if (!result.lengthMultiplier) result.lengthMultiplier = kCmuLengthMultiplier;
    if (!result.framesPerSecond) {
        result.framesPerSecond = kCmuFramesPerSecond;
        result.rateOrigin = RateOrigin::Preset;
    }
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
