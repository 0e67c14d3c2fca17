// Reads the rows of a BVH motion, one for each frame, and reports what is odd about them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "survey/bvh_skeleton.h"
#include "survey/finding_list.h"

namespace survey {

// Where the values of a frame are in the text.
struct BvhRow {
    const char* at = nullptr;  // the first word; the others follow it, perhaps on further lines
    std::uint32_t line = 0;    // the frame's own line, also if its values are those of another row
    bool isPlain = true;       // the plug-in reads each word as the number that it is
    bool isSplit = false;      // a word may hold several numbers without a blank between them
};

struct BvhFrames {
    std::vector<BvhRow> rows;    // one for each frame
    std::vector<double> values;  // frame by frame, in the file's units; finite
    std::size_t channels = 0;    // values in each frame
    bool hasOddWhite = false;    // white space that the plug-in takes for a part of words
    BvhSpot end;                 // where the next section begins, or the end of the text

    std::size_t Count() const { return rows.size(); }
    const double* Frame(std::size_t index) const { return values.data() + index * channels; }
};

// Reads the rows after the section's header and reports what is odd about them. Returns false if
// the motion is refused; `frames` then holds whatever could be read.
bool ReadRows(const BvhSection& section, std::string_view text, FindingList& findings,
              BvhFrames& frames);

// Reports if the header announces another number of frames than `frames`, or if there are none.
void CompareFrameCount(const BvhSection& section, std::size_t frames, FindingList& findings);

// The joint that the value at this index of a row belongs to; null if there is none.
const BvhJoint* JointOfValue(const BvhSection& section, std::size_t value);

}  // namespace survey
