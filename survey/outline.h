// The outline of a skeleton: the names and parents of its joints, without any numbers.
#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace survey {

struct OutlineJoint {
    static constexpr std::uint32_t kNoParent = std::numeric_limits<std::uint32_t>::max();

    // UTF-8. For an end site, the name that the plug-in gives to its object, such as "Head_End".
    // Several joints may have the same name.
    std::string name;
    std::uint32_t parent = kNoParent;  // index of the parent in the outline; kNoParent for a root
    bool isEndSite = false;
};

// All joints and end sites of one skeleton. A parent comes before its children. Children of one
// parent are in the order in which the plug-in creates them as nulls.
using Outline = std::vector<OutlineJoint>;

}  // namespace survey
