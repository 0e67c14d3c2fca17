// What the readers of all formats tell of a text before they read it, and of names in it.
#pragma once

#include <string>
#include <string_view>

#include "survey/finding_list.h"

namespace survey {

// Tells of a byte-order mark and of a text that was converted as a whole, each of which makes the
// file one to be mended. An empty file is an error. Returns whether there is anything to read.
bool ReportSource(FindingList& findings);

// A name of the text as UTF-8: as it is, or read as Windows-1252 with a warning, and then the file
// is one to be mended. Never shorter than the name in characters.
std::string NameAsUtf8(std::string_view name, FindingList& findings);

}  // namespace survey
