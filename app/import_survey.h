// The look at an import's files before the plug-in gets them.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "app/arguments.h"
#include "app/finding_text.h"
#include "survey/survey.h"
#include "text/storage.h"

namespace app {

// A file as the plug-in gets it.
struct PluginFile {
    std::string path;                     // the file itself, or the text in its stead; empty: none
    std::vector<survey::LineMark> lines;  // of a text in its stead; empty: the file itself
    bool IsMended() const { return !lines.empty(); }
};

struct ImportSurvey {
    // What is to be imported: the files as the user named them, settings as the survey found them.
    ImportRequest request;
    std::vector<FileFindings> findings;  // of each file; empty without a survey
    bool refused = false;
    PluginFile file;
    PluginFile motion;
    std::unique_ptr<text::TemporaryFolder> folder;  // of texts; null without one
    // What the scene's lengths are multiplied by beyond the unit that was asked for.
    double multiplied = 1.0;
};

// Surveys the files of the request and writes what is to be mended; with `asIs` does nothing but
// apply a preset that was asked for. Throws text::WriteError where a text cannot be written.
ImportSurvey SurveyImport(const ImportRequest& request);

}  // namespace app
