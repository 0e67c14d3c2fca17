// The survey of an import's files, before the plug-in reads them.
#pragma once

#include <optional>
#include <vector>

#include "survey/survey.h"
#include "take/findings.h"
#include "take/request.h"
#include "text/storage.h"

namespace take {

struct FileSurvey {
    std::vector<FileFindings> findings;  // one element for each file; empty without a survey
    bool isRefused = false;              // the findings forbid the import
    // The mended texts that the plug-in reads instead of the files; none: it reads the file itself.
    std::optional<survey::MendedText> file;
    std::optional<survey::MendedText> motion;
    // The values of the request or, where it has none, those that the survey found. None: the text
    // that the plug-in reads states the value itself.
    std::optional<double> framesPerSecond;
    std::optional<double> lengthMultiplier;
    // The survey enlarges a skeleton whose bones are too short for the plug-in. This is the factor
    // on all lengths of the scene; exports divide by it. 1: nothing was enlarged.
    double multiplied = 1.0;
};

// Surveys the files as the request's format asks. With Request::asIs no file is read; then only the
// request's own values and those of Preset::Cmu are filled in.
FileSurvey SurveyFiles(const Request& request, text::Storage& storage);

}  // namespace take
