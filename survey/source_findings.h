// Findings that are the same for all formats: about the text as a whole, and about names in it.
#pragma once

#include <string>
#include <string_view>

#include "survey/finding_list.h"

namespace survey {

// If the file is empty, reports this as an error and returns false. Returns true for other files.
// Reports if a UTF-8 byte-order mark was left out, and if the text was converted to UTF-8. In these
// two findings `mended` is true.
bool ReportSource(FindingList& findings);

// Returns the name as UTF-8. `name` must point into the source's text. A name that is not UTF-8 is
// read as Windows-1252. This is reported as a warning in which `mended` is true.
std::string NameAsUtf8(std::string_view name, FindingList& findings);

}  // namespace survey
