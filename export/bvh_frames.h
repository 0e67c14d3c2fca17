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
    // Keeps a reference to `motion`. `rootTurn` is applied to the first joint in every frame.
    BvhFrames(const ExportedMotion& motion, const headless::Transform& rootTurn);
    // Waits until the other threads have finished.
    ~BvhFrames();
    BvhFrames(const BvhFrames&) = delete;
    BvhFrames& operator=(const BvhFrames&) = delete;

    // Both spans have one element for each joint. The caller passes the angles to AnglesNear, with
    // the angles of the previous frame.
    struct Frame {
        std::span<const headless::Transform> locals;
        std::span<const PrincipalAngles> angles;
    };
    // Returns the next frame. Its spans are valid until the next call. May be called at most once
    // for each frame of the motion. Throws what computing the frame throws.
    Frame Next();

  private:
    struct Block {
        std::vector<headless::Transform> locals;  // frame by frame, one for each joint
        std::vector<PrincipalAngles> angles;      // one for each element of `locals`
        std::size_t frames = 0;                   // the number of frames in this block
        std::future<void> work;                   // is ready when the block has been computed
    };

    // The number of blocks that are computed while the caller writes the current block. Computing a
    // block takes about three times as long as writing it.
    static constexpr std::size_t kAhead = 2;

    // Whether Next() has returned all frames of the current block. This is also true before the
    // first call of Next(), because the constructor leaves block 0 empty.
    bool IsCurrentUsedUp() const { return frameInBlock_ == blocks_[current_].frames; }

    // Starts to compute the frames of the motion from the index startedFrames_ on. They are stored
    // in `block`.
    void Start(Block& block);
    // Computes the frames of the block; `first` is the index of its first frame in the motion.
    void Fill(Block& block, std::size_t first) const;

    const ExportedMotion& motion_;
    headless::Transform rootTurn_;
    std::size_t joints_;
    std::size_t framesInBlock_;
    std::array<Block, 1 + kAhead> blocks_;  // a ring: the current block and those being computed
    std::size_t current_ = 0;               // index of the block that Next() returns frames of
    std::size_t startedFrames_ = 0;         // frames of all blocks that were started so far
    std::size_t frameInBlock_ = 0;          // index of the next frame in the current block
};

}  // namespace exporters
