// Finds the skeleton that an Acclaim motion belongs to.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pairing {

struct Pairing {
    std::string skeleton;  // one of the names that were given; empty if none fits
    std::string problem;   // why none fits, for the user; otherwise empty
};

// `motion` is the name of an .amc file, `skeletons` are the names of the .asf files in its folder.
//
// A skeleton fits if its name without extension is the motion's or is its beginning. After such a
// beginning, two letters or digits must not meet: "07" fits "07_01", but not "070". The longest
// name that fits is chosen; of two names that differ only in letter case, the one with the motion's
// case. If two fit equally well, there is no result. If none fits, the only skeleton of the folder
// is chosen.
Pairing FindSkeleton(std::string_view motion, const std::vector<std::string>& skeletons);

}  // namespace pairing
