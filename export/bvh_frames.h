// The frames of a motion as BVH rows need them, computed ahead by other threads while earlier ones
// are written.
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
    // `motion` has to outlive it. `rootTurn` is applied to the first joint.
    BvhFrames(const ExportedMotion& motion, const headless::Transform& rootTurn);
    // Waits for the other threads.
    ~BvhFrames();
    BvhFrames(const BvhFrames&) = delete;
    BvhFrames& operator=(const BvhFrames&) = delete;

    // The joints seen from their parents, and their angles, of which AnglesNear makes those that
    // follow the frame before.
    struct Frame {
        std::span<const headless::Transform> locals;
        std::span<const PlainAngles> angles;
    };
    // The next frame; to be called once for each frame at most. Valid until the next call. Throws
    // what computing the frame throws.
    Frame Next();

  private:
    struct Block {
        std::vector<headless::Transform> locals;  // frame by frame
        std::vector<PlainAngles> angles;          // likewise
        std::size_t frames = 0;
        std::future<void> work;
    };

    // Computing a block takes about three times as long as writing it.
    static constexpr std::size_t kAhead = 2;

    void Start(Block& block);
    void Fill(Block& block, std::size_t first) const;

    const ExportedMotion& motion_;
    headless::Transform rootTurn_;
    std::size_t joints_;
    std::size_t framesInBlock_;
    std::array<Block, 1 + kAhead> blocks_;  // a ring: one is read, the others are computed
    std::size_t current_ = 0;               // the one that is read
    std::size_t begun_ = 0;                 // frames of the blocks that were started
    std::size_t frameInBlock_ = 0;          // the next one, in the current block
};

}  // namespace exporters
