// Findings that are the same for all formats: about the text as a whole, and about names in it.
#pragma once

#include <string>
#include <string_view>

#include "survey/finding_list.h"

namespace survey {

// Reports a byte-order mark, and a text that was converted as a whole; both count as mended.
// Reports an empty file as an error and then returns false.
bool ReportSource(FindingList& findings);

// The name as UTF-8. `name` points into the text. A name that is not UTF-8 is read as Windows-1252,
// which is reported as a mended warning.
std::string NameAsUtf8(std::string_view name, FindingList& findings);

}  // namespace survey
