#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace support {

struct AcclaimTexts {
    std::string asf;
    std::string amc;
    // The options for the import of the pair.
    bool limits = false;
    std::optional<double> length;
};

// Makes a random pair: any tree, axis frames and axis orders, degrees of freedom in any order,
// ignored translations, animated lengths, very short bones, limits, degrees and radians, any order
// of the root's channels, frame numbers with gaps. Right angles are frequent. The same seed gives
// the same texts on every machine.
AcclaimTexts RandomAcclaim(std::uint64_t seed);

}  // namespace support
