// The canonical text of a BVH: keywords in their usual case, a joint a group of lines, line feeds,
// "Frames:" as there are, one row a frame. What reads it by the format's rules reads it right,
// unless the plan lists turned rotations as the plug-in alone takes them.
#pragma once

#include <cstddef>
#include <string_view>

#include "survey/bvh_plan.h"
#include "survey/bvh_rows.h"
#include "survey/bvh_skeleton.h"
#include "survey/line_marks.h"

namespace survey {

// A section with what is handed on of it.
struct BvhPart {
    BvhSection section;
    BvhFrames frames;
    BvhPlan plan;
    bool hasFrames = false;    // the rows were read
    std::size_t rowCount = 0;  // whether they were or not
};

// Writes a section. `text` is the file's; `frameTime` is written where the section states none.
// `needsMotion` writes one without rows for a section that has none.
void WriteSection(const BvhPart& part, std::string_view text, double frameTime, bool needsMotion,
                  LineWriter& writer);

}  // namespace survey
