// Computes the frames of a motion for BVH rows. Other threads compute the next frames while the
// caller writes the earlier ones.
// Internal to export/.
#pragma once

#include <array>
#include <cstddef>
#include <future>
#include <span>
#include <vector>

#include "export/bvh_angles.h"
#include "export/exported_motion.h"

namespace exporters {

class BvhFrames {
  public:
    // Keeps a reference to `motion`. `rootTurn` is applied to the first joint.
    BvhFrames(const ExportedMotion& motion, const headless::Transform& rootTurn);
    // Waits for the other threads.
    ~BvhFrames();
    BvhFrames(const BvhFrames&) = delete;
    BvhFrames& operator=(const BvhFrames&) = delete;

    // One element for each joint. The caller passes the angles to AnglesNear, which continues those
    // of the frame before.
    struct Frame {
        std::span<const headless::Transform> locals;
        std::span<const PrincipalAngles> angles;
    };
    // Returns the next frame, valid until the next call. May be called at most once for each frame
    // of the motion. Throws what computing the frame throws.
    Frame Next();

  private:
    struct Block {
        std::vector<headless::Transform> locals;  // frame by frame
        std::vector<PrincipalAngles> angles;      // frame by frame
        std::size_t frames = 0;
        std::future<void> work;
    };

    // The number of blocks that are computed while the caller writes another one. Computing a block
    // takes about three times as long as writing it.
    static constexpr std::size_t kAhead = 2;

    // Whether Next() has returned all frames of the current block. This is so at the start too,
    // because the first of the blocks is empty then.
    bool IsCurrentUsedUp() const { return frameInBlock_ == blocks_[current_].frames; }

    void Start(Block& block);
    void Fill(Block& block, std::size_t first) const;

    const ExportedMotion& motion_;
    headless::Transform rootTurn_;
    std::size_t joints_;
    std::size_t framesInBlock_;
    std::array<Block, 1 + kAhead> blocks_;  // a ring: one is read while the others are computed
    std::size_t current_ = 0;               // index of the block that is read
    std::size_t startedFrames_ = 0;         // frames of all blocks that were started so far
    std::size_t frameInBlock_ = 0;          // index of the next frame in the current block
};

}  // namespace exporters
