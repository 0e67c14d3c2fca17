// Builds Acclaim pairs that differ from a clean pair in one thing, and compares their findings.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "survey/survey.h"

namespace acclaim_case {

// A skeleton with a root, a spine and two arms, and a motion of twelve frames.
std::string CleanAsf();
std::string CleanAmc();

// The text with the first occurrence of `old` replaced. Fails the test if there is none.
std::string With(std::string text, std::string_view old, std::string_view replacement);

struct Told {
    std::string_view code;
    survey::Severity severity = survey::Severity::Note;
    std::size_t line = 0;
    bool mended = false;
    std::size_t count = 1;
    std::string joint = {};
};

// Fails the test unless `findings` are those of `told`, in any order.
void ExpectFindings(const std::vector<survey::Finding>& findings, const std::vector<Told>& told);

survey::Options For(survey::Purpose purpose);

// The purpose for which a mended text is written: Fix if a finding is mended, otherwise Import,
// which also mends what only the plug-in would misread.
survey::Purpose PurposeThatWrites(const std::vector<Told>& told);

// Surveys one skeleton with one motion.
survey::AcclaimSurvey Survey(const std::string& asf, const std::string& amc,
                             const survey::Options& options);

}  // namespace acclaim_case
