#pragma once

#include <cstdint>
#include <unordered_map>
#include <utility>

#include "host/scene_objects.h"
#include "host/string.h"

// The two matrices that GetBoneGlobalMatrix returns for an object.
struct BoneMatrices {
    double global[4][4];
    double inverse[4][4];
};

// Computes what GetBoneGlobalMatrix returns, for many objects of a scene that does not change in
// the meantime. No ancestor is read more than twice, so the time for a deep skeleton grows with the
// number of its objects.
class BoneMatrixCache {
  public:
    explicit BoneMatrixCache(Zelk::CString stopName) : stopName_(std::move(stopName)) {}

    // Throws std::bad_alloc.
    BoneMatrices Get(const Zelk3DObject& object);

  private:
    // Only the rotations are stored; the fourth row and column of a BoneMatrices are those of the
    // identity.
    struct Rotations {
        double global[3][3];
        double inverse[3][3];
    };
    static Rotations Packed(const BoneMatrices& matrices);
    static BoneMatrices Unpacked(const Rotations& rotations);

    Zelk::CString stopName_;
    // The matrices of ancestors only. Most objects of a large skeleton have no child, and storing
    // their matrices would only cost memory.
    std::unordered_map<std::uint32_t, Rotations> known_;
};
