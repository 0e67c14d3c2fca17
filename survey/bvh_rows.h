// Reads the rows of a BVH motion, one for each frame, and reports what is odd about them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "survey/bvh_skeleton.h"
#include "survey/finding_list.h"
#include "survey/numbers.h"

namespace survey {

// Where the values of a frame are in the text.
struct BvhRow {
    // The first word of the row. In a file that splits frames into several lines, or has several
    // frames in one line, the other words follow regardless of line ends. Otherwise each line is
    // one frame. If such a line has a wrong number of values, its frame gets the row of the frame
    // before, or the first good row if there is none before. In that case, this is the first word
    // of that other row.
    const char* at = nullptr;
    std::uint32_t line = 0;  // number of the frame's own line, counted from 1
    bool isPlain = true;     // whether each word is one number that the plug-in accepts
    bool isSplit = false;    // whether a word may hold several numbers, such as "1-2"
};

struct BvhFrames {
    std::vector<BvhRow> rows;  // one for each frame
    // Frame by frame, in the file's units; all are finite. Empty as long as the rows have only been
    // found (see FindPlainRows).
    Numbers values;
    std::size_t channels = 0;  // number of values in each frame
    bool hasOddWhite = false;  // whether white space occurs that is no separator for the plug-in
    BvhSpot end;               // where the next section begins, or the end of the text

    std::size_t Count() const { return rows.size(); }
    bool IsRead() const { return values.size() == rows.size() * channels; }
    const double* Frame(std::size_t index) const { return values.data() + index * channels; }
};

// Reads the rows after the section's header and reports what is odd about them. Returns false if
// the motion is refused. In that case `frames` may be incomplete and hold values that are not
// finite.
bool ReadRows(const BvhSection& section, std::string_view text, FindingList& findings,
              BvhFrames& frames);

// Reports if the header announces another number of frames than `frames`, or if `frames` is 0.
void CompareFrameCount(const BvhSection& section, std::size_t frames, FindingList& findings);

// The joint that the value at index `value` of a row belongs to; null if there is none.
const BvhJoint* JointOfValue(const BvhSection& section, std::size_t value);

}  // namespace survey
