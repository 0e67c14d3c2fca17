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

// GetBoneGlobalMatrix for many objects of one scene that does not change meanwhile: no ancestor is
// read more than twice, so that deep skeletons cost no more than their objects.
class BoneMatrixCache {
  public:
    explicit BoneMatrixCache(Zelk::CString stopName) : stopName_(std::move(stopName)) {}

    // Throws std::bad_alloc.
    BoneMatrices Get(const Zelk3DObject& object);

  private:
    // The rotations alone: what else is in a BoneMatrices is that of the identity.
    struct Rotations {
        double global[3][3];
        double inverse[3][3];
    };
    static Rotations Packed(const BoneMatrices& matrices);
    static BoneMatrices Unpacked(const Rotations& rotations);

    Zelk::CString stopName_;
    // Of what stood above something that was asked for. Most of a large skeleton stands above
    // nothing.
    std::unordered_map<std::uint32_t, Rotations> known_;
};
