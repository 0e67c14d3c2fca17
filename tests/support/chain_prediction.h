// Which joints of a BVH skeleton bone chains can carry, worked out from the tree alone.
#pragma once

#include <string>
#include <vector>

#include "tests/support/bvh_walk.h"

namespace support {

struct JointPrediction {
    // A bone, a null or, for the leaf that ends a chain, its effector stands for the joint.
    bool isInChain = false;
    // Nothing that a curve could drive: not in any chain, or a leaf that only ends one.
    bool hasNoObject = false;
    // Why bones may put this joint elsewhere than the file does; empty where they may not. Holds
    // for everything below the joint that causes it.
    std::string setApart;
};

std::vector<JointPrediction> PredictChains(const WalkFile& file, bool chainFromParent);

// Whether a joint with channels is left without an object.
bool PredictFailure(const WalkFile& file, const std::vector<JointPrediction>& joints);

}  // namespace support
