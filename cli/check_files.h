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
#include "take/request.h"

namespace cli {

// A file of the command line.
struct CheckInput {
    take::InputFile file;
    pairing::CaptureKind kind = pairing::CaptureKind::Biovision;
};

struct CheckedFile {
    const CheckInput* input = nullptr;
    survey::FileSurvey survey;
    std::string_view text;  // the file's text; empty if the file could not be read
};

// Returns the files of the command line. The standard input is not read.
std::vector<CheckInput> InputsOf(const CheckRequest& request);

// Surveys the files and calls `each` for every file, in the order of the command line. The
// CheckedFile is valid only during that call. Packed files are unpacked. If one of the files is the
// standard input, it must have been read (LoadStandardInput).
void CheckFiles(const std::vector<CheckInput>& files, const survey::Options& options,
                const std::function<void(const CheckedFile&)>& each);

}  // namespace cli
