// The survey of files as they were named on a command line: an .asf together with the .amc files
// after it.
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
    std::string_view text;  // the file itself; empty where it could not be read
};

// Calls `each` with every file in the order they were named; what it is given is valid during the
// call.
void CheckFiles(const CheckRequest& request, survey::Purpose purpose,
                const std::function<void(const CheckedFile&)>& each);

}  // namespace cli
