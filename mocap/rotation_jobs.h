#pragma once

#include <cstdint>
#include <vector>

#include "math/rotation_batch.h"
#include "mocap/rotation_keys.h"

// Converts the rotations of many nodes, on several threads.
class RotationJobs {
  public:
    // Every node has `frameCount` rotations.
    explicit RotationJobs(std::uint32_t frameCount) : frameCount_(frameCount) {}

    // Adds the conversion that keys.Convert(frameCount, product) would make. It may be made at once
    // or later. Until Run has returned, the keys must exist, nobody may use their values, and they
    // must not be added again. The matrices of `product` are copied. Throws std::bad_alloc.
    void Add(const RotationKeys& keys, const RotationProduct& product);
    // Makes all conversions that were added and not made yet.
    void Run() noexcept;

  private:
    struct Job {
        Job(const RotationKeys& jobKeys, const RotationProduct& product);
        // Converts the frames from `first` to `first` + `count` - 1.
        void Convert(std::uint32_t first, std::uint32_t count) const;

        RotationKeys keys;
        int axis[3];
        bool hasBefore;
        bool hasAfter;
        double before[4][4];
        double after[4][4];
    };

    std::uint32_t frameCount_;
    std::vector<Job> jobs_;
};
