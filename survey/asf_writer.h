// Writes ASF skeletons in a form that every reader accepts.
#pragma once

#include <memory>
#include <string>

#include "survey/acclaim_skeleton.h"
#include "survey/marked_text.h"
#include "survey/survey.h"

namespace survey {

// Appends a number as the file writes it, but a zero in an odd form as "0". A number that was
// computed is written with at most 12 decimals.
void AppendNumber(std::string& out, const AsfNumber& number);

// Writes parents before their children. Dofs that are marked as left out are not written. All axis
// orders must be XYZ. `source` is the text that the skeleton was read from.
std::shared_ptr<const MendedText> WriteAsf(const AsfSkeleton& skeleton, const SourceText& source);

}  // namespace survey
