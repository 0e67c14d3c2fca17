// The survey of an import's files, before the plug-in reads them.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "survey/survey.h"
#include "take/findings.h"
#include "take/input_text.h"
#include "take/rate_origin.h"
#include "take/request.h"
#include "text/storage.h"

namespace take {

// What the plug-in reads instead of the user's file. If both are null, it reads the user's file.
struct NewText {
    std::unique_ptr<const InputText> original;  // the text of a file that was packed or mended
    std::shared_ptr<const survey::MendedText> mended;  // made of `original`; may be null
};

struct FileSurvey {
    std::vector<FileFindings> findings;  // one element for each file; empty without a survey
    bool isRefused = false;              // whether the findings forbid the import
    NewText file;                        // instead of Request::file
    NewText motion;                      // instead of Request::motion
    // The rate that exports and the summary use: the request's rate or, if the request gives none,
    // the survey's rate. If nullopt, the rate that the plug-in read is used.
    std::optional<double> framesPerSecond;
    RateOrigin rateOrigin = RateOrigin::File;
    // The rate that the file states, whatever `framesPerSecond` is. Nullopt if it states none, and
    // without a survey.
    std::optional<double> statedRate;
    // The factor on an Acclaim skeleton's lengths that the plug-in must use instead of the file's
    // factor. It includes `multiplied`. If nullopt, the plug-in uses the file's factor.
    std::optional<double> lengthMultiplier;
    // The survey enlarges a skeleton whose bones are too short for the plug-in. All lengths of the
    // scene are then multiplied by this factor, and exports divide by it. 1 if nothing was
    // enlarged.
    double multiplied = 1.0;
    // The skeletons of the files, one for each model. Empty if the files could not be read.
    std::vector<survey::Outline> outlines;
};

// Surveys the files of the request. With Request::asIs, files are read only if they are packed or
// if bones are to be built, and no finding is reported but that a packed file cannot be read. The
// result then contains the rate and the length multiplier of the request and, for bones, the
// outlines. With Preset::Cmu, the preset's value is used if the request does not give one.
FileSurvey SurveyFiles(const Request& request, text::Storage& storage);

}  // namespace take
