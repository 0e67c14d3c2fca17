// The survey of files as they were named on a command line: an .asf together with the .amc files
// after it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "app/check_request.h"
#include "survey/survey.h"

namespace app {

enum class CaptureFormat : std::uint8_t { Bvh, Asf, Amc };
CaptureFormat FormatOfCapture(const std::string& path);
std::string_view NameOf(CaptureFormat format);  // "bvh", "asf", "amc"

struct CheckedFile {
    std::string path;
    CaptureFormat format = CaptureFormat::Bvh;
    survey::FileSurvey survey;
    std::string_view text;  // the file itself; empty where it could not be read
};

// Calls `each` with every file in the order they were named; what it is given is valid during the
// call.
void CheckFiles(const CheckRequest& request, survey::Purpose purpose,
                const std::function<void(const CheckedFile&)>& each);

}  // namespace app
