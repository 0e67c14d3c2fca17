// Findings that are the same for all formats: about the text as a whole, and about names in it.
#pragma once

#include <string>
#include <string_view>

#include "survey/finding_list.h"

namespace survey {

// Reports a byte-order mark, and that the text was converted to UTF-8. Both findings are mended.
// Reports an empty file as an error and returns false; for other files returns true.
bool ReportSource(FindingList& findings);

// Returns the name as UTF-8. `name` must point into the source's text. A name that is not UTF-8 is
// read as Windows-1252, and this is reported as a mended warning.
std::string NameAsUtf8(std::string_view name, FindingList& findings);

}  // namespace survey
