#pragma once

#include <string_view>

namespace fuzz {

// The first byte holds the options, the rest is a BVH file. The survey of any file must give sound
// findings. A file that it does not refuse must be imported by the plug-in, from the mended text if
// there is one, with as many joints as the survey says. A fixed text must have nothing left to
// mend.
void CheckBvhSurvey(std::string_view input);

// The same of an ASF file and, after the first "~", an AMC file.
void CheckAcclaimSurvey(std::string_view input);

}  // namespace fuzz
