#pragma once

#include <string_view>

namespace fuzz {

// The first byte holds the options, the rest is a BVH file. Whatever the file, the survey must give
// findings that are sound; a file that it does not refuse must be imported by the plug-in, from the
// text in its stead where there is one, with as many joints and frames as the survey says; and a
// fixed text must have nothing left to mend.
void CheckBvhSurvey(std::string_view input);

// The same of an ASF file and, after the first "~", an AMC file.
void CheckAcclaimSurvey(std::string_view input);

}  // namespace fuzz
