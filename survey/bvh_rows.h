// The rows of a BVH's motion as people write them: their numbers, one row a frame, and what is odd
// about them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "survey/bvh_skeleton.h"
#include "survey/finding_list.h"

namespace survey {

// Where the values of a frame are written.
struct BvhRow {
    const char* at = nullptr;  // of its first word; the others follow, on whichever line
    std::uint32_t line = 0;
    // Each word is one value and is written as the plug-in reads it.
    bool isPlain = true;
    bool isSplit = false;  // words are numbers that touch each other
};

struct BvhFrames {
    std::vector<BvhRow> rows;    // one a frame
    std::vector<double> values;  // frame by frame, finite
    std::size_t channels = 0;
    bool hasOddWhite = false;  // words are parted by what parts none for the plug-in
    BvhSpot end;               // where a further section begins, or the end of the text

    std::size_t Count() const { return rows.size(); }
    const double* Frame(std::size_t index) const { return values.data() + index * channels; }
};

// Reads the rows after the section's header and tells what is odd about them. False where the
// motion is refused; `frames` then has whatever could be read.
bool ReadRows(const BvhSection& section, std::string_view text, FindingList& findings,
              BvhFrames& frames);

// Tells where the header announces another number of frames than there are.
void CompareFrameCount(const BvhSection& section, std::size_t frames, FindingList& findings);

// The joint that a value of a row belongs to.
const BvhJoint* JointOfValue(const BvhSection& section, std::size_t value);

}  // namespace survey
