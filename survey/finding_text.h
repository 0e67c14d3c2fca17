// Findings as people and programs read them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "survey/finding.h"
#include "text/api.h"

namespace survey {

// Of a file that cannot be read, for the reason that is given.
Finding UnreadableFinding(const std::string& problem);

ZKMOCAP_API std::string_view NameOf(Severity severity);  // "note", "warning", "error"

// As compilers print it, without the file: "12:3: note: words [code]".
ZKMOCAP_API std::string FindingText(const Finding& finding);

// "walk.bvh:12:3: note: words [code]" and a line feed. With `escapeControls`, for a terminal.
ZKMOCAP_API std::string FindingLine(const std::string& file, const Finding& finding,
                                    bool escapeControls = false);

// Appends {"code": ..., "severity": ..., "line": ..., "column": ..., "count": ..., "joint": ...,
// "message": ..., "mended": ...}; with `file`, that first.
ZKMOCAP_API void AppendFindingJson(std::string& out, const Finding& finding,
                                   const std::string* file = nullptr);

}  // namespace survey
