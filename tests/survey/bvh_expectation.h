// Compares the survey of a BVH text with a row of a table.
#pragma once

#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "survey/codes.h"
#include "survey/survey.h"

namespace survey_test {

using survey::Severity;

struct Expected {
    std::string_view code;
    Severity severity = Severity::Note;
    std::size_t line = 0;
    std::size_t column = 0;
    std::size_t count = 1;
    bool mended = true;
};

struct BvhRow {
    const char* name;
    std::string text;
    std::vector<Expected> findings;  // by line and column
    // A part of the mended text; empty if there must be none.
    std::string mended;
};

// Surveys the row's text and compares. Also checks that the text written for Purpose::Fix needs no
// mending.
void ExpectSurvey(const BvhRow& row, const survey::Options& options);

}  // namespace survey_test
