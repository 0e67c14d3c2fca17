#pragma once

#include <cstdint>
#include <unordered_map>
#include <utility>

#include "host/scene_objects.h"
#include "host/string.h"

// What GetBoneGlobalMatrix gives for an object.
struct BoneMatrices {
    double global[4][4];
    double inverse[4][4];
};

// GetBoneGlobalMatrix for many objects of one scene that does not change meanwhile: every ancestor
// is read once, so that deep skeletons cost no more than their objects.
class BoneMatrixCache {
  public:
    explicit BoneMatrixCache(Zelk::CString stopName) : stopName_(std::move(stopName)) {}

    // Valid until the cache is destroyed.
    const BoneMatrices& Get(const Zelk3DObject& object);

  private:
    Zelk::CString stopName_;
    std::unordered_map<std::uint32_t, BoneMatrices> known_;
};
