#pragma once

#include <cstdint>
#include <unordered_map>
#include <utility>

#include "host/scene_objects.h"
#include "host/string.h"

// The two matrices that GetBoneGlobalMatrix computes for an object.
struct BoneMatrices {
    double global[4][4];
    double inverse[4][4];
};

// Computes the matrices of GetBoneGlobalMatrix for many objects. The scene must not change while
// the cache is in use. The cache reads no ancestor more than twice, so the time is proportional to
// the number of objects, even for a deep skeleton.
class BoneMatrixCache {
  public:
    explicit BoneMatrixCache(Zelk::CString stopName) : stopName_(std::move(stopName)) {}

    // Throws std::bad_alloc.
    BoneMatrices Get(const Zelk3DObject& object);

  private:
    // Only the rotations are stored. The fourth row and the fourth column of the matrices are
    // always equal to those of the identity.
    struct Rotations {
        double global[3][3];
        double inverse[3][3];
    };
    static Rotations Packed(const BoneMatrices& matrices);
    static BoneMatrices Unpacked(const Rotations& rotations);

    Zelk::CString stopName_;
    // The key is the id of a host object. Only ancestors of the requested objects are stored. An
    // object without a child is never needed again, so storing it would only cost memory.
    std::unordered_map<std::uint32_t, Rotations> known_;
};
