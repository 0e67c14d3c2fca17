// Finds the skeleton that an Acclaim motion belongs to.
// Part of the public surface of the library.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "text/api.h"

namespace pairing {

struct Pairing {
    std::string skeleton;  // the skeleton that was chosen; empty if none was chosen
    std::string problem;   // tells the user why none was chosen; empty if one was chosen
};

// `motion` is the name of an .amc file. `skeletons` are the names of the .asf files in its folder.
//
// Names are compared without extension, without a ".gz" after it, and without regard to letter
// case. A skeleton fits if its name is the motion's name or the beginning of it. If the skeleton's
// name ends with a letter or digit, the next character of the motion's name must be neither: "07"
// fits "07_01", but not "070".
//
// The longest name that fits is chosen. Of two names that differ only in letter case, the one with
// the motion's letter case is chosen. Of two names that differ only in ".gz", the one that is
// packed or plain as the motion is chosen. If two names fit equally well, none is chosen. If no
// name fits but the folder has only one skeleton, that skeleton is chosen.
ZKMOCAP_API Pairing FindSkeleton(std::string_view motion,
                                 const std::vector<std::string>& skeletons);

// The skeletons of a folder, for a search by many motions. The time of a search does not depend on
// the number of skeletons.
class Skeletons {
  public:
    // `names` is what FindSkeleton gets as `skeletons`.
    ZKMOCAP_API explicit Skeletons(std::vector<std::string> names);
    // Returns what FindSkeleton returns.
    ZKMOCAP_API Pairing Find(std::string_view motion) const;

  private:
    std::vector<std::string> names_;
    // The indexes of the names, in ascending order. The key is the name without extension, in
    // folded case.
    std::unordered_map<std::wstring, std::vector<std::size_t>> byStem_;
};

}  // namespace pairing
