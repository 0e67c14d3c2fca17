// Predicts, from the tree alone, which joints of a BVH skeleton get objects as bones.
#pragma once

#include <string>
#include <vector>

#include "tests/support/bvh_walk.h"

namespace support {

struct JointPrediction {
    // The joint has a bone, a null or, if it is the leaf that ends a chain, the chain's effector.
    bool isInChain = false;
    // There is no object that a curve could drive: the joint is in no chain, or only ends one.
    bool hasNoObject = false;
    // Why this joint may have other positions as bones than in the file; empty if it may not. It is
    // also the reason for everything below the joint that causes it.
    std::string setApart;
};

std::vector<JointPrediction> PredictChains(const WalkFile& file, bool chainFromParent);

// Whether a joint with channels is left without an object.
bool PredictFailure(const WalkFile& file, const std::vector<JointPrediction>& joints);

}  // namespace support
