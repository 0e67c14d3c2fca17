#include "app/import_survey.h"

#include <span>
#include <utility>

#include "files/mapped_file.h"
#include "files/system_storage.h"
#include "survey/codes.h"
#include "text/path_text.h"

namespace app {
namespace {

constexpr double kCmuLengthMultiplier = 0.056444;  // inches, and the archive's own 0.45, to metres
constexpr double kCmuFramesPerSecond = 120.0;

survey::Preset PresetOf(const ImportRequest& request) {
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

survey::Options OptionsOf(const ImportRequest& request) {
    survey::Options options;
    options.purpose = survey::Purpose::Import;
    options.bones = !request.useNulls;
    options.encoding = request.encoding;
    options.framesPerSecond = request.framesPerSecond;
    options.lengthMultiplier = request.lengthMultiplier;
    options.preset = PresetOf(request);
    return options;
}

// Gathers what the surveys of the files found.
class Gathering {
  public:
    explicit Gathering(const ImportRequest& request) { result_.request = request; }

    // Whether the file could be read; otherwise that is a finding.
    bool IsReadable(const std::string& path, const files::MappedFile& file) {
        if (file.Problem().empty()) return true;
        Add(path, {UnreadableFinding(file.Problem())});
        return false;
    }

    void Add(const std::string& path, std::vector<survey::Finding> findings) {
        const bool strict = result_.request.strict;
        for (const survey::Finding& finding : findings)
            result_.refused |= finding.severity == survey::Severity::Error ||
                               (strict && finding.severity == survey::Severity::Warning);
        result_.findings.push_back({path, std::move(findings)});
    }

    // A rate or a length of the user's own is already in the options that the survey got.
    void SetRate(std::optional<double> framesPerSecond) {
        if (framesPerSecond && !result_.request.framesPerSecond)
            result_.request.framesPerSecond = framesPerSecond;
    }
    void SetLengths(const survey::AcclaimSurvey& acclaim) {
        if (acclaim.lengthMultiplier) result_.request.lengthMultiplier = acclaim.lengthMultiplier;
        result_.multiplied = acclaim.multiplied;
    }

    // Of files that are not refused: writes the texts.
    ImportSurvey Finish(const survey::FileSurvey* file, const survey::FileSurvey* motion) {
        const ImportRequest& request = result_.request;
        result_.file.path = request.file;
        result_.motion.path = request.motionFile;
        if (result_.refused) return std::move(result_);
        std::size_t bytes = 0;
        for (const survey::FileSurvey* each : {file, motion})
            if (each && each->mended) bytes += each->mended->text.size();
        Write(file, request.file, bytes, result_.file);
        Write(motion, request.motionFile, bytes, result_.motion);
        return std::move(result_);
    }

  private:
    void Write(const survey::FileSurvey* surveyed, const std::string& path, std::size_t bytes,
               PluginFile& file) {
        if (!surveyed || !surveyed->mended) return;
        if (!result_.folder) result_.folder = files::SystemStorage(true).MakeTemporaryFolder(bytes);
        file.path =
            result_.folder->Write(std::string(text::NamePart(path)), surveyed->mended->text);
        file.lines = surveyed->mended->lines;
        if (file.lines.empty()) file.lines.emplace_back();
    }

    ImportSurvey result_;
};

ImportSurvey SurveyBiovision(const ImportRequest& request) {
    Gathering gathering(request);
    const files::MappedFile file(request.file);
    if (!gathering.IsReadable(request.file, file)) return gathering.Finish(nullptr, nullptr);
    survey::BvhSurvey surveyed = survey::SurveyBvh(file.Text(), OptionsOf(request));
    gathering.Add(request.file, std::move(surveyed.findings));
    gathering.SetRate(surveyed.framesPerSecond);
    return gathering.Finish(&surveyed, nullptr);
}

ImportSurvey SurveyAcclaimPair(const ImportRequest& request) {
    Gathering gathering(request);
    const files::MappedFile skeleton(request.file);
    const bool hasMotion = !request.motionFile.empty();
    // Without one, nothing is mapped.
    const files::MappedFile motion(hasMotion ? request.motionFile : "/dev/null");
    const bool skeletonReadable = gathering.IsReadable(request.file, skeleton);
    const bool motionReadable = !hasMotion || gathering.IsReadable(request.motionFile, motion);
    if (!skeletonReadable || !motionReadable) return gathering.Finish(nullptr, nullptr);

    const survey::AcclaimFile motionFile{motion.Text(),
                                         std::string(text::NamePart(request.motionFile))};
    const std::span<const survey::AcclaimFile> motions(&motionFile, hasMotion ? 1 : 0);
    survey::AcclaimSurvey surveyed = survey::SurveyAcclaim(
        {skeleton.Text(), std::string(text::NamePart(request.file))}, motions, OptionsOf(request));
    gathering.Add(request.file, std::move(surveyed.skeleton.findings));
    gathering.SetLengths(surveyed);
    if (surveyed.motions.empty()) return gathering.Finish(&surveyed.skeleton, nullptr);
    survey::AmcSurvey& moved = surveyed.motions.front();
    gathering.Add(request.motionFile, std::move(moved.findings));
    gathering.SetRate(moved.framesPerSecond);
    return gathering.Finish(&surveyed.skeleton, &moved);
}

ImportSurvey WithoutSurvey(const ImportRequest& request) {
    ImportSurvey result;
    result.request = request;
    result.file.path = request.file;
    result.motion.path = request.motionFile;
    if (request.preset != Preset::Cmu) return result;
    if (!request.lengthMultiplier) result.request.lengthMultiplier = kCmuLengthMultiplier;
    if (!request.framesPerSecond) result.request.framesPerSecond = kCmuFramesPerSecond;
    return result;
}

}  // namespace

ImportSurvey SurveyImport(const ImportRequest& request) {
    if (request.asIs) return WithoutSurvey(request);
    return request.format == SourceFormat::Acclaim ? SurveyAcclaimPair(request)
                                                   : SurveyBiovision(request);
}

}  // namespace app
