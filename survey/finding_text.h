// Writes findings as text and as JSON.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "survey/finding.h"
#include "text/api.h"

namespace survey {

// Returns the finding for a file that cannot be read. `problem` becomes its message.
Finding UnreadableFinding(const std::string& problem);

ZKMOCAP_API std::string_view NameOf(Severity severity);  // "note", "warning" or "error"

// Returns the finding as compilers write messages, but without the file's name:
// "12:3: note: message [code]". A finding about the file as a whole has no "12:3: ".
ZKMOCAP_API std::string FindingText(const Finding& finding);

// Returns the FindingText after the file's name and before a line feed: "walk.bvh:12:3: note:
// message [code]\n". `escapeControls` replaces control characters by visible escapes, so that they
// cannot control the terminal on which the line is shown.
ZKMOCAP_API std::string FindingLine(const std::string& file, const Finding& finding,
                                    bool escapeControls = false);

// Appends {"code": ..., "severity": ..., "line": ..., "column": ..., "count": ..., "joint": ...,
// "message": ..., "mended": ...} to `out`. If `file` is not null, the key "file" comes first.
ZKMOCAP_API void AppendFindingJson(std::string& out, const Finding& finding,
                                   const std::string* file = nullptr);

}  // namespace survey
