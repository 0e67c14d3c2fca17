#include "tests/fuzz/survey_check.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "acclaim/acclaim_import.h"
#include "bvh/biovision_import.h"
#include "headless/session.h"
#include "survey/codes.h"
#include "survey/survey.h"
#include "tests/fuzz/memory_file.h"
#include "tests/fuzz/require.h"
#include "tests/fuzz/scene_requirements.h"
#include "tests/support/core/session_text.h"
#include "text/utf8.h"

namespace fuzz {
namespace {

using survey::Finding;
using survey::Purpose;
using survey::Severity;

constexpr std::size_t kLongestText = 6000;
constexpr char kTextSeparator = '~';

survey::Options OptionsOf(char bits, Purpose purpose) {
    survey::Options options;
    options.purpose = purpose;
    options.bones = (bits & 1) != 0;
    if ((bits & 2) != 0) options.encoding = "SHIFT_JIS";
    if ((bits & 4) != 0) options.framesPerSecond = 48.0;
    if ((bits & 8) != 0) options.lengthMultiplier = 0.5;
    if ((bits & 16) != 0) options.preset = survey::Preset::None;
    return options;
}

void RequireSoundFindings(const std::vector<Finding>& findings, std::string_view file) {
    const std::span<const std::string_view> codes = survey::codes::All();
    const auto lines =
        1 + std::count_if(file.begin(), file.end(), [](char c) { return c == '\n' || c == '\r'; });
    std::vector<std::string_view> seen;
    for (const Finding& finding : findings) {
        const std::string code(finding.code);
        Require(std::find(codes.begin(), codes.end(), code) != codes.end(), "unknown code " + code);
        Require(std::find(seen.begin(), seen.end(), finding.code) == seen.end(), code + " twice");
        seen.push_back(finding.code);
        Require(!finding.message.empty(), code + " has no message");
        Require(text::IsValidUtf8(finding.message), code + " has a message that is no UTF-8");
        Require(text::IsValidUtf8(finding.joint), code + " has a joint that is no UTF-8");
        Require(finding.count > 0, code + " has no case");
        Require((finding.line == 0) == (finding.column == 0), code + " has half a position");
        Require(finding.line <= static_cast<std::size_t>(lines), code + " is after the end");
    }
}

// Requires that the findings and the mended text of a file that is not refused agree.
void RequireConsistentMending(const survey::FileSurvey& surveyed, Purpose purpose) {
    // A survey for a check makes no text.
    if (purpose == Purpose::Check) return;
    for (const Finding& finding : surveyed.findings)
        Require(!finding.mended || surveyed.mended != nullptr,
                std::string(finding.code) + " is mended but there is no mended text");
    if (!surveyed.mended) return;
    text::StringSink sink;
    const std::vector<survey::LineMark> marks = surveyed.mended->Write(sink);
    Require(text::IsValidUtf8(sink.Bytes()), "a text that is no UTF-8");
    Require(sink.Bytes() == surveyed.mended->Text(), "another text the second time");
    std::size_t last = 0;
    for (const survey::LineMark& mark : marks) {
        Require(mark.mended > last && mark.original > 0, "line marks do not rise");
        last = mark.mended;
    }
}

// Requires that the survey of a fixed text has no errors and nothing to mend.
void RequireNothingToMend(const survey::FileSurvey& surveyed) {
    for (const Finding& finding : surveyed.findings) {
        const std::string code(finding.code);
        Require(finding.severity != Severity::Error, "a fixed text has " + code);
        Require(!finding.mended, "a fixed text has " + code + " to mend");
    }
    Require(!surveyed.mended, "a fixed text is mended");
}

std::string TextOf(const survey::FileSurvey& surveyed, std::string_view file) {
    return surveyed.mended ? surveyed.mended->Text() : std::string(file);
}

// The plug-in must import what the survey passes.
void ImportBvh(const std::string& text, bool nulls) {
    const MemoryFile file(text);
    CBiovisionImport importer;
    importer.SetOptions(nulls, true, false, true);
    support::StartSession(false);
    const Zelk::CStatus status = importer.ImportBVH(file.Path().c_str(), L"probe");
    Require(status.Succeeded(), std::string("the plug-in refuses a file that the survey passes") +
                                    (nulls ? "" : " for bones") + ": " +
                                    support::Utf8(importer.GetLastError(nullptr, nullptr)));
    RequireSoundScene(true);
}

std::size_t NullsInScene() {
    const auto objects = headless::Session::Current().GetScene().Objects();
    return static_cast<std::size_t>(std::count_if(
        objects.begin(), objects.end(),
        [](const headless::Object* object) { return object->type == headless::ObjectType::Null; }));
}

void ImportPair(const std::string& asf, const std::optional<std::string>& amc,
                std::optional<double> length, bool nulls) {
    support::StartSession(false);
    CAcclaimImport importer;
    importer.SetOptions(nulls, true, false, true);
    if (length) importer.OverrideLengthMultiplier(true, *length);
    const MemoryFile skeleton(asf);
    Zelk::CStatus status = importer.ImportSkeleton(skeleton.Path().c_str(), L"probe");
    if (status.Succeeded() && amc) {
        const MemoryFile motion(*amc);
        status = importer.ImportMotion(motion.Path().c_str(), L"motion");
    }
    Require(status.Succeeded(), "the plug-in refuses a file that the survey passes: " +
                                    support::Utf8(importer.GetLastError(nullptr, nullptr)));
    RequireSoundScene(true, true);
}

struct AcclaimTexts {
    std::string asf;
    std::optional<std::string> amc;

    survey::AcclaimSurvey Survey(const survey::Options& options) const {
        const survey::AcclaimFile motion{amc ? std::string_view(*amc) : std::string_view(),
                                         "07_01.amc"};
        return survey::SurveyAcclaim({asf, "07.asf"}, {&motion, amc ? 1U : 0U}, options);
    }
};

bool IsRefused(const survey::AcclaimSurvey& surveyed) {
    return surveyed.skeleton.Has(Severity::Error) ||
           (!surveyed.motions.empty() && surveyed.motions[0].Has(Severity::Error));
}

AcclaimTexts TextsOf(const survey::AcclaimSurvey& surveyed, const AcclaimTexts& files) {
    AcclaimTexts texts{TextOf(surveyed.skeleton, files.asf), {}};
    if (files.amc) texts.amc = TextOf(surveyed.motions[0], *files.amc);
    return texts;
}

void RequireSoundSurvey(const survey::AcclaimSurvey& surveyed, const AcclaimTexts& files,
                        Purpose purpose) {
    Require(surveyed.motions.size() == (files.amc ? 1U : 0U), "motions are lost or too many");
    RequireSoundFindings(surveyed.skeleton.findings, files.asf);
    if (files.amc) RequireSoundFindings(surveyed.motions[0].findings, *files.amc);
    if (IsRefused(surveyed)) return;
    RequireConsistentMending(surveyed.skeleton, purpose);
    if (files.amc) RequireConsistentMending(surveyed.motions[0], purpose);
}

}  // namespace

void CheckBvhSurvey(std::string_view input) {
    if (input.empty() || input.size() > kLongestText) return;
    const std::string file(input.substr(1));
    for (const Purpose purpose : {Purpose::Check, Purpose::Import, Purpose::Fix}) {
        const survey::BvhSurvey surveyed = survey::SurveyBvh(file, OptionsOf(input[0], purpose));
        RequireSoundFindings(surveyed.findings, file);
        if (surveyed.Has(Severity::Error)) return;
        RequireConsistentMending(surveyed, purpose);
    }
    const survey::Options options = OptionsOf(input[0], Purpose::Import);
    const survey::BvhSurvey surveyed = survey::SurveyBvh(file, options);
    ImportBvh(TextOf(surveyed, file), !options.bones);
    if (!options.bones) {
        const std::size_t joints = surveyed.facts.joints + surveyed.facts.endSites;
        Require(NullsInScene() == joints, "the survey counts " + std::to_string(joints) +
                                              " joints, the scene has " +
                                              std::to_string(NullsInScene()));
    }
    const survey::BvhSurvey fixed = survey::SurveyBvh(file, OptionsOf(input[0], Purpose::Fix));
    const std::string text = TextOf(fixed, file);
    RequireNothingToMend(survey::SurveyBvh(text, OptionsOf(input[0], Purpose::Fix)));
    survey::Options nulls = options;
    nulls.bones = false;
    ImportBvh(TextOf(survey::SurveyBvh(text, nulls), text), true);
    headless::Session::Current().Reset();
}

void CheckAcclaimSurvey(std::string_view input) {
    if (input.empty() || input.size() > kLongestText) return;
    const std::string_view texts = input.substr(1);
    const std::size_t separator = texts.find(kTextSeparator);
    AcclaimTexts files{std::string(texts.substr(0, separator)), {}};
    if (separator != std::string_view::npos) files.amc = std::string(texts.substr(separator + 1));
    for (const Purpose purpose : {Purpose::Check, Purpose::Import, Purpose::Fix}) {
        const survey::AcclaimSurvey surveyed = files.Survey(OptionsOf(input[0], purpose));
        RequireSoundSurvey(surveyed, files, purpose);
        if (IsRefused(surveyed)) return;
    }
    const survey::Options options = OptionsOf(input[0], Purpose::Import);
    const survey::AcclaimSurvey surveyed = files.Survey(options);
    const AcclaimTexts mended = TextsOf(surveyed, files);
    ImportPair(mended.asf, mended.amc, surveyed.lengthMultiplier, !options.bones);

    const AcclaimTexts fixed = TextsOf(files.Survey(OptionsOf(input[0], Purpose::Fix)), files);
    const survey::AcclaimSurvey again = fixed.Survey(OptionsOf(input[0], Purpose::Fix));
    RequireNothingToMend(again.skeleton);
    if (fixed.amc) RequireNothingToMend(again.motions[0]);
    headless::Session::Current().Reset();
}

}  // namespace fuzz
