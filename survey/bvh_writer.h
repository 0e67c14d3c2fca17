// Writes the mended text of a BVH: keywords in their usual letter case, line feeds, the true number
// of frames, one row for each frame. Every reader that follows the format's rules reads it as
// meant, unless the plan lists re-expressed rotations in the order that only the plug-in reads so.
#pragma once

#include <cstddef>
#include <string_view>

#include "survey/bvh_plan.h"
#include "survey/bvh_rows.h"
#include "survey/bvh_skeleton.h"
#include "survey/line_marks.h"

namespace survey {

// A section, its frames, and how its text is written.
struct BvhPart {
    BvhSection section;
    BvhFrames frames;
    BvhPlan plan;
    bool hasFrames = false;    // `frames` is filled
    std::size_t rowCount = 0;  // number of frames, also without `frames`
};

// Writes a section. `text` is the file's text. `frameTime`, in seconds, is written if the section
// states none. If the section has no motion, `needsMotion` writes one without rows.
void WriteSection(const BvhPart& part, std::string_view text, double frameTime, bool needsMotion,
                  LineWriter& writer);

}  // namespace survey
