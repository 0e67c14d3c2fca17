// Writes the mended text of a BVH file. Keywords get their usual letter case, lines end with line
// feeds, each frame has one row, and the number of frames is correct. Every reader that follows the
// rules of the format reads the text as it is meant. The only exception is a text that is written
// with BvhPlan::listsXyz: only the plug-in reads its rotations as they are meant.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "survey/bvh_plan.h"
#include "survey/bvh_rows.h"
#include "survey/bvh_skeleton.h"
#include "survey/line_marks.h"

namespace survey {

// A section, its frames, and the plan for its mended text.
struct BvhPart {
    BvhSection section;
    BvhFrames frames;
    BvhPlan plan;
    bool hasFrames = false;    // whether ReadRows has filled `frames`
    std::size_t rowCount = 0;  // number of frames; also valid if `frames` is empty
    // In seconds. It is written if the section states no frame time above 0.
    double frameTime = 0.0;
};

// Writes a section with these frames. `text` is the file's text. If `needsMotion` and the section
// has no motion, writes a motion without rows.
void WriteSection(const BvhPart& part, const BvhFrames& frames, std::string_view text,
                  bool needsMotion, LineWriter& writer);

// About how many bytes the section has in the mended text, apart from what it has in the file.
std::uint64_t LikelyNewBytes(const BvhPart& part);

}  // namespace survey
