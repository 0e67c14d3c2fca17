#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace support {

struct AcclaimTexts {
    std::string asf;
    std::string amc;
    // How they are meant to be imported.
    bool limits = false;
    std::optional<double> length;
};

// A pair out of a seed: any tree, axis frames and their orders, degrees of freedom in any order,
// ignored translations, animated lengths, bones of next to no length, limits, degrees and radians,
// any order of the root's channels, frame numbers with gaps. Not rarely a right angle. The same
// seed gives the same texts everywhere.
AcclaimTexts RandomAcclaim(std::uint64_t seed);

}  // namespace support
