#include "take/file_survey.h"

#include <algorithm>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "survey/codes.h"
#include "survey/finding_text.h"
#include "take/input_text.h"
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

survey::AcclaimFile AcclaimFileOf(const InputFile& file, const InputText& text) {
    return {text.Text(), PlainName(file)};
}

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
    // If the survey has a multiplier, it replaces the one of the request. It already includes the
    // request's multiplier. It also includes `multiplied`, the factor by which the survey enlarges
    // a skeleton whose bones are too short for the plug-in.
    void SetLengths(const survey::AcclaimSurvey& acclaim) {
        if (acclaim.lengthMultiplier) result_.lengthMultiplier = acclaim.lengthMultiplier;
        result_.multiplied = acclaim.multiplied;
    }

    void SetOutlines(std::vector<survey::Outline> outlines) {
        result_.outlines = std::move(outlines);
    }

    // Adds the text that the plug-in reads instead of the file: the mended text or, for a packed
    // file, the unpacked one. Both functions do nothing if the files are refused.
    void SetFile(const survey::FileSurvey& file, std::unique_ptr<const InputText> text) {
        SetText(file, std::move(text), result_.file);
    }
    void SetMotion(const survey::FileSurvey& motion, std::unique_ptr<const InputText> text) {
        SetText(motion, std::move(text), result_.motion);
    }

    FileSurvey Finish() { return std::move(result_); }

  private:
    void SetText(const survey::FileSurvey& surveyed, std::unique_ptr<const InputText> text,
                 NewText& newText) const {
        if (result_.isRefused) return;
        newText.mended = surveyed.mended;
        if (surveyed.mended || text->IsUnpacked()) newText.original = std::move(text);
    }

    const Request& request_;
    FileSurvey result_;
};

FileSurvey SurveyBiovision(const Request& request, text::Storage& storage) {
    SurveyCollector collector(request);
    auto file = std::make_unique<const InputText>(request.file, storage);
    if (!collector.CheckReadable(request.file, *file)) return collector.Finish();
    survey::BvhSurvey surveyed = survey::SurveyBvh(file->Text(), OptionsOf(request));
    collector.SetRate(surveyed, surveyed.framesPerSecond);
    collector.Add(request.file, std::move(surveyed.findings));
    collector.SetOutlines(std::move(surveyed.outlines));
    collector.SetFile(surveyed, std::move(file));
    return collector.Finish();
}

FileSurvey SurveyAcclaim(const Request& request, text::Storage& storage) {
    SurveyCollector collector(request);
    auto skeleton = std::make_unique<const InputText>(request.file, storage);
    std::unique_ptr<const InputText> motion;
    if (request.motion) motion = std::make_unique<const InputText>(*request.motion, storage);
    const bool isSkeletonReadable = collector.CheckReadable(request.file, *skeleton);
    const bool isMotionReadable = !motion || collector.CheckReadable(*request.motion, *motion);
    if (!isSkeletonReadable || !isMotionReadable) return collector.Finish();

    std::vector<survey::AcclaimFile> motions;
    if (motion) motions.push_back(AcclaimFileOf(*request.motion, *motion));
    survey::AcclaimSurvey surveyed =
        survey::SurveyAcclaim(AcclaimFileOf(request.file, *skeleton), motions, OptionsOf(request));
    collector.Add(request.file, std::move(surveyed.skeleton.findings));
    collector.SetLengths(surveyed);
    collector.SetOutlines({std::move(surveyed.outline)});
    if (motion) {
        survey::AmcSurvey& surveyedMotion = surveyed.motions.front();
        collector.SetRate(surveyedMotion, surveyedMotion.framesPerSecond);
        collector.Add(*request.motion, std::move(surveyedMotion.findings));
        collector.SetMotion(surveyedMotion, std::move(motion));
    }
    collector.SetFile(surveyed.skeleton, std::move(skeleton));
    return collector.Finish();
}

// Unpacks the file if it is packed. Otherwise, the plug-in reads it, and reports why if it cannot.
NewText UnpackedAsIs(const InputFile& file, text::Storage& storage, FileSurvey& result) {
    if (!IsPacked(file)) return {};
    auto text = std::make_unique<const InputText>(file, storage);
    if (text->Problem().empty()) return {std::move(text), nullptr};
    result.findings.push_back({file.path, {survey::UnreadableFinding(text->Problem())}});
    result.isRefused = true;
    return {};
}

FileSurvey WithoutSurvey(const Request& request, text::Storage& storage) {
    FileSurvey result;
    result.file = UnpackedAsIs(request.file, storage, result);
    if (request.motion) result.motion = UnpackedAsIs(*request.motion, storage, result);
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
    static constexpr FileSurvey (*kSurveys[kFormatCount])(const Request&, text::Storage&) = {
        SurveyBiovision, SurveyAcclaim};
    const auto survey = kSurveys[static_cast<std::size_t>(request.format)];
    if (!request.asIs) return survey(request, storage);
    FileSurvey result = WithoutSurvey(request, storage);
    // In a scene of nulls each joint of the file has its own object. In a scene of bones it may
    // not, so exporters need the outline even if nothing else of the survey is wanted.
    if (!request.useNulls && !result.isRefused) result.outlines = survey(request, storage).outlines;
    return result;
}

}  // namespace take
