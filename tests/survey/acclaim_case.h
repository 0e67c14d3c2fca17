// Acclaim pairs that differ from a clean one in one thing.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "survey/survey.h"

namespace acclaim_case {

// A skeleton with a root, a spine with a child on each of two arms, and a motion of twelve frames.
std::string CleanAsf();
std::string CleanAmc();

// With the first occurrence of `old` replaced; fails the test where there is none.
std::string With(std::string text, std::string_view old, std::string_view replacement);

struct Told {
    std::string_view code;
    survey::Severity severity = survey::Severity::Note;
    std::size_t line = 0;
    bool mended = false;
    std::size_t count = 1;
    std::string joint = {};
};

// Fails the test unless the findings are those, in any order.
void ExpectFindings(const std::vector<survey::Finding>& findings, const std::vector<Told>& told);

survey::Options For(survey::Purpose purpose);

// A fixed text differs from the file only where a finding is mended; what the plug-in alone would
// stumble over is left to the import.
survey::Purpose PurposeThatWrites(const std::vector<Told>& told);

// Of one skeleton and one motion.
survey::AcclaimSurvey Survey(const std::string& asf, const std::string& amc,
                             const survey::Options& options);

}  // namespace acclaim_case
