// Surveys the files of a command line. A .bvh is surveyed alone. An .asf is surveyed together with
// the .amc files that follow it on the command line, up to the next .asf. An .amc without an
// .asf before it is surveyed alone.
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
    std::string_view text;  // the file's bytes; empty if the file could not be read
};

// Surveys the files and calls `each` for every file, in the order of the command line. The
// CheckedFile is valid only during that call.
void CheckFiles(const CheckRequest& request, survey::Purpose purpose,
                const std::function<void(const CheckedFile&)>& each);

}  // namespace cli
