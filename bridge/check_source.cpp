#include "bridge/check_source.h"

#include <utility>

#include "survey/finding_text.h"
#include "take/input_text.h"

namespace bridge {
namespace {

survey::AcclaimFile AcclaimFileOf(const take::InputFile& file, const take::InputText& text) {
    return {text.Text(), take::PlainName(file)};
}

survey::FileSurvey Unreadable(const std::string& problem) {
    survey::FileSurvey survey;
    survey.findings = {survey::UnreadableFinding(problem)};
    return survey;
}

survey::FileSurvey SurveyAlone(const take::InputFile& file, const take::InputText& text,
                               SourceKind kind, const survey::Options& options) {
    if (!text.Problem().empty()) return Unreadable(text.Problem());
    if (!kind.isAcclaim) return survey::SurveyBvh(text.Text(), options);
    if (kind.isMotionAlone) return survey::SurveyAmcAlone(AcclaimFileOf(file, text), options);
    return survey::SurveyAcclaim(AcclaimFileOf(file, text), {}, options).skeleton;
}

}  // namespace

std::vector<CheckedSource> CheckSource(const take::InputFile& file, const take::InputFile* motion,
                                       SourceKind kind, const survey::Options& options,
                                       text::Storage& storage) {
    const take::InputText text(file, storage);
    if (!motion) return {{file.path, SurveyAlone(file, text, kind, options)}};
    const take::InputText motionText(*motion, storage);
    if (!text.Problem().empty() || !motionText.Problem().empty())
        return {{file.path, SurveyAlone(file, text, {true, false}, options)},
                {motion->path, SurveyAlone(*motion, motionText, {true, true}, options)}};
    const survey::AcclaimFile motions[] = {AcclaimFileOf(*motion, motionText)};
    survey::AcclaimSurvey surveyed =
        survey::SurveyAcclaim(AcclaimFileOf(file, text), motions, options);
    return {{file.path, std::move(surveyed.skeleton)},
            {motion->path, std::move(surveyed.motions.front())}};
}

}  // namespace bridge
