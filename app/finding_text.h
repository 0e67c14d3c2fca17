// Findings as people and programs read them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "survey/finding.h"

namespace app {

// The findings of one file, by line.
struct FileFindings {
    std::string file;  // as the user named it
    std::vector<survey::Finding> findings;
};

// Of a file that cannot be read, for the reason that is given.
survey::Finding UnreadableFinding(const std::string& problem);

std::string_view NameOf(survey::Severity severity);  // "note", "warning", "error"

// As compilers print it, without the file: "12:3: note: words [code]".
std::string FindingText(const survey::Finding& finding);

// "walk.bvh:12:3: note: words [code]" and a line feed. With `escapeControls`, for a terminal.
std::string FindingLine(const std::string& file, const survey::Finding& finding,
                        bool escapeControls);

// Appends {"code": ..., "severity": ..., "line": ..., "column": ..., "count": ..., "joint": ...,
// "message": ..., "mended": ...}; with `file`, that first.
void AppendFindingJson(std::string& out, const survey::Finding& finding,
                       const std::string* file = nullptr);

// The same for each finding of the files. Where there are several files, each says its own.
std::vector<std::string> FindingsJson(const std::vector<FileFindings>& files);

}  // namespace app
