// The mended text of a BVH file.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "survey/bvh_writer.h"
#include "survey/source_text.h"
#include "survey/survey.h"

namespace survey {

// What the survey has read of a file. The parts point into the source.
struct BvhReading {
    BvhReading(std::string_view bvh, const std::string& encoding) : source(bvh, encoding) {}

    SourceText source;
    std::vector<BvhPart> parts;  // one for each section
};

// The result shares the reading, which must not be changed any more. If the rows of a part have not
// been read, they are read when the text is written; the scan must have found nothing odd in them.
std::shared_ptr<const MendedText> MendBvh(std::shared_ptr<const BvhReading> reading);

}  // namespace survey
