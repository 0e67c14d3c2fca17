#include "tests/survey/acclaim_case.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace acclaim_case {
namespace {

constexpr const char* kSeverities[] = {"note", "warning", "error"};

std::string TextOf(const survey::Finding& finding) {
    return std::string(finding.code) + " " + kSeverities[static_cast<int>(finding.severity)] +
           " line " + std::to_string(finding.line) + " x" + std::to_string(finding.count) + " " +
           finding.joint + (finding.mended ? " mended" : "");
}

std::string TextOf(const Told& told) {
    return std::string(told.code) + " " + kSeverities[static_cast<int>(told.severity)] + " line " +
           std::to_string(told.line) + " x" + std::to_string(told.count) + " " + told.joint +
           (told.mended ? " mended" : "");
}

template <class Items>
std::string Sorted(const Items& items) {
    std::vector<std::string> texts;
    for (const auto& item : items)
        texts.push_back(TextOf(item));
    std::sort(texts.begin(), texts.end());
    std::string all;
    for (const std::string& text : texts)
        all += text + "\n";
    return all;
}

}  // namespace

std::string CleanAsf() {
    return R"(# a figure
:version 1.10
:name figure
:units
  mass 1.0
  length 1.0
  angle deg
:documentation
  A figure of three bones.
:root
  order TX TY TZ RX RY RZ
  axis XYZ
  position 0 0 0
  orientation 0 0 0
:bonedata
  begin
    id 1
    name spine
    direction 0 1 0
    length 40
    axis 0 0 20 XYZ
    dof rx ry rz
    limits (-60 60)
           (-60 60)
           (-60 60)
  end
  begin
    id 2
    name larm
    direction 1 0 0
    length 20
    axis 10 20 30 XYZ
    dof rz
  end
  begin
    id 3
    name rarm
    direction -0.6 0.8 0
    length 30.5
    axis 0 0 0 XYZ
  end
:hierarchy
  begin
    root spine
    spine larm rarm
  end
)";
}

std::string CleanAmc() {
    std::string text = ":SAMPLES-PER-SECOND 60\n:FULLY-SPECIFIED\n:DEGREES\n";
    for (int frame = 1; frame <= 12; ++frame) {
        const std::string number = std::to_string(frame);
        text += number + "\nroot 1." + number + " 90 -3.5 10 20 " + number + "\nspine " + number +
                " 15 -20\nlarm 4." + number + "\n";
    }
    return text;
}

std::string With(std::string text, std::string_view old, std::string_view replacement) {
    const std::size_t at = text.find(old);
    EXPECT_NE(at, std::string::npos) << old;
    if (at != std::string::npos) text.replace(at, old.size(), replacement);
    return text;
}

void ExpectFindings(const std::vector<survey::Finding>& findings, const std::vector<Told>& told) {
    std::string messages;
    for (const survey::Finding& finding : findings)
        messages += finding.message + "\n";
    EXPECT_EQ(Sorted(findings), Sorted(told)) << messages;
}

survey::Options For(survey::Purpose purpose) {
    survey::Options options;
    options.purpose = purpose;
    return options;
}

survey::Purpose PurposeThatWrites(const std::vector<Told>& told) {
    const bool isMended =
        std::any_of(told.begin(), told.end(), [](const Told& finding) { return finding.mended; });
    return isMended ? survey::Purpose::Fix : survey::Purpose::Import;
}

survey::AcclaimSurvey Survey(const std::string& asf, const std::string& amc,
                             const survey::Options& options) {
    const survey::AcclaimFile motion = {amc, "walk.amc"};
    return survey::SurveyAcclaim({asf, "walk.asf"}, {&motion, 1}, options);
}

}  // namespace acclaim_case
