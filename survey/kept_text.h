// A mended text that is made at once and kept in memory.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "survey/survey.h"

namespace survey {

std::shared_ptr<const MendedText> KeepText(std::string text, std::vector<LineMark> lines);

}  // namespace survey
