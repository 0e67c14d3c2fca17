#pragma once

#include <cstdint>
#include <string>

namespace support {

// A BVH file out of a seed: branching heads, single-child roots, loose joints, zero offsets, joints
// of three, six and fewer channels, any rotation order, repeated names, a joint named like the
// model. Not rarely a right angle. The same seed gives the same text everywhere.
std::string RandomBvh(std::uint64_t seed);

}  // namespace support
