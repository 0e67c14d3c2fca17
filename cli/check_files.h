// Surveys the files of a command line: each .bvh alone, each .asf together with the .amc files that
// are named after it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cli/check_request.h"
#include "pairing/capture_kind.h"
#include "survey/survey.h"

namespace cli {

struct CheckedFile {
    std::string path;
    pairing::CaptureKind kind = pairing::CaptureKind::Biovision;
    survey::FileSurvey survey;
    std::string_view text;  // the file's bytes; empty where it could not be read
};

// Calls `each` with every file, in the order in which the files were named. The argument is valid
// only during that call.
void CheckFiles(const CheckRequest& request, survey::Purpose purpose,
                const std::function<void(const CheckedFile&)>& each);

}  // namespace cli
