// Surveys the files of one take without importing them.
// Part of the public surface of the library.
#pragma once

#include <string>
#include <vector>

#include "survey/survey.h"
#include "take/request.h"
#include "text/api.h"
#include "text/storage.h"

namespace bridge {

struct CheckedSource {
    std::string file;  // the path as the user wrote it
    survey::FileSurvey survey;
};

// Which kind of file the first or only file of a take is.
struct SourceKind {
    bool isAcclaim = false;
    // Only for Acclaim: the single file is a motion without its skeleton.
    bool isMotionAlone = false;
};

// Surveys `file` alone or, if `motion` is not null, the skeleton `file` with the motion. Returns
// one element for each file. Packed files are unpacked. A file that cannot be read gets an error as
// its only finding.
ZKMOCAP_API std::vector<CheckedSource> CheckSource(const take::InputFile& file,
                                                   const take::InputFile* motion, SourceKind kind,
                                                   const survey::Options& options,
                                                   text::Storage& storage);

}  // namespace bridge
