// Which skeleton an Acclaim motion belongs to.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pairing {

struct Pairing {
    std::string skeleton;  // one of the names; empty: none
    std::string problem;   // then, why
};

// `motion` and `skeletons` are the names of an .amc and of the .asf files of its folder. The
// skeleton whose name, without extension, is the motion's or begins it, up to where something other
// than a letter or digit follows ("07" begins "07_01", and not "070"); the longest such name, and
// of equal ones that with the same case. Otherwise the folder's only skeleton.
Pairing FindSkeleton(std::string_view motion, const std::vector<std::string>& skeletons);

}  // namespace pairing
