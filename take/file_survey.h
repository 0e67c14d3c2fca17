// The look at an import's files before the plug-in gets them.
#pragma once

#include <optional>
#include <vector>

#include "survey/survey.h"
#include "take/findings.h"
#include "take/request.h"
#include "text/storage.h"

namespace take {

struct FileSurvey {
    std::vector<FileFindings> findings;  // of each file; empty without a survey
    bool isRefused = false;
    // The texts that the plug-in is to read in the files' stead; none: the files themselves.
    std::optional<survey::MendedText> file;
    std::optional<survey::MendedText> motion;
    // As the request states them or else as the survey found them; none: what the plug-in reads
    // says so itself.
    std::optional<double> framesPerSecond;
    std::optional<double> lengthMultiplier;
    // What the scene's lengths are multiplied by beyond the unit that was asked for.
    double multiplied = 1.0;
};

// With Request::asIs no file is looked at, and a preset that was asked for is applied.
FileSurvey SurveyFiles(const Request& request, text::Storage& storage);

}  // namespace take
