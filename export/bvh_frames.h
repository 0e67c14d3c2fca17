// The frames of a motion as BVH rows need them, worked out ahead by other threads while the ones
// before are written.
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
    // Waits for what is under way.
    ~BvhFrames();
    BvhFrames(const BvhFrames&) = delete;
    BvhFrames& operator=(const BvhFrames&) = delete;

    // The joints seen from their parents, and any angles of theirs (see AnglesNear).
    struct Frame {
        std::span<const headless::Transform> locals;
        std::span<const PlainAngles> angles;
    };
    // Valid until the next call; to be called once a frame at most. Throws what working it out
    // throws.
    Frame Next();

  private:
    struct Block {
        std::vector<headless::Transform> locals;  // frame by frame
        std::vector<PlainAngles> angles;          // likewise
        std::size_t frames = 0;
        std::future<void> work;
    };

    // Writing takes about a third as long as working out.
    static constexpr std::size_t kAhead = 2;

    void Start(Block& block);
    void Fill(Block& block, std::size_t first) const;

    const ExportedMotion& motion_;
    headless::Transform rootTurn_;
    std::size_t joints_;
    std::size_t framesInBlock_;
    std::array<Block, 1 + kAhead> blocks_;  // a ring: one is handed out, the others are worked on
    std::size_t current_ = 0;               // the one that is handed out
    std::size_t begun_ = 0;                 // frames in blocks that were started
    std::size_t place_ = 0;                 // of the next frame in the current block
};

}  // namespace exporters
