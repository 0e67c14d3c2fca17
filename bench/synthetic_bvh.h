#pragma once

#include <cstdint>
#include <string>

namespace bench {

struct BvhShape {
    std::int64_t joints = 24;
    std::int64_t frames = 1000;
};

// A BVH file whose skeleton has five limbs. The root has six channels, the other joints have
// Zrotation Xrotation Yrotation. Values have six decimals; the same shape gives the same bytes.
std::string SyntheticBvh(const BvhShape& shape);

// The number of channels in such a file.
std::int64_t Channels(const BvhShape& shape);

// The path of the file in the temporary folder. A process writes it once.
std::string SyntheticBvhFile(const BvhShape& shape);

}  // namespace bench
