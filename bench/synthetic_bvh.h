#pragma once

#include <cstdint>
#include <string>

namespace bench {

// The size of a BVH file. `joints` includes the root, but not the end sites.
struct BvhShape {
    std::int64_t joints = 24;
    std::int64_t frames = 1000;
};

// Returns the text of a BVH file. Its skeleton is a root with five limbs. The root has six
// channels. Each other joint has the channels Zrotation, Xrotation and Yrotation. Each value has
// six digits after the decimal point. The same shape always gives the same bytes.
std::string SyntheticBvh(const BvhShape& shape);

// Returns the number of channels of all joints in the file that SyntheticBvh makes.
std::int64_t Channels(const BvhShape& shape);

// Writes the text of SyntheticBvh to a file in the temporary folder, and returns its path. If the
// process has already written this file, only the path is returned.
std::string SyntheticBvhFile(const BvhShape& shape);

}  // namespace bench
