#pragma once

#include <cstdint>
#include <string>

namespace bench {

struct BvhShape {
    std::int64_t joints = 24;
    std::int64_t frames = 1000;
};

// A skeleton of five limbs, root with six channels, others Zrotation Xrotation Yrotation, six
// decimals; the same shape gives the same bytes.
std::string SyntheticBvh(const BvhShape& shape);

// Channels of such a file.
std::int64_t Channels(const BvhShape& shape);

// The file in the temporary folder, written once a process.
std::string SyntheticBvhFile(const BvhShape& shape);

}  // namespace bench
