// Findings as text and as JSON.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "survey/finding.h"
#include "text/api.h"

namespace survey {

// The finding for a file that cannot be read; `problem` is its message.
Finding UnreadableFinding(const std::string& problem);

ZKMOCAP_API std::string_view NameOf(Severity severity);  // "note", "warning", "error"

// The finding in the style of compilers, without the file: "12:3: note: message [code]".
ZKMOCAP_API std::string FindingText(const Finding& finding);

// "walk.bvh:12:3: note: message [code]" and a line feed. `escapeControls` replaces control
// characters by visible escapes, as terminals need it.
ZKMOCAP_API std::string FindingLine(const std::string& file, const Finding& finding,
                                    bool escapeControls = false);

// Appends {"code": ..., "severity": ..., "line": ..., "column": ..., "count": ..., "joint": ...,
// "message": ..., "mended": ...}. If `file` is given, "file" comes first.
ZKMOCAP_API void AppendFindingJson(std::string& out, const Finding& finding,
                                   const std::string* file = nullptr);

}  // namespace survey
