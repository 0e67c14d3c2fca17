// Chooses which of the two quaternions of a rotation is written, frame after frame.
// Internal to export/.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "math/pose_lanes.h"

namespace exporters {

// Consecutive frames of one joint. Each rotation has two quaternions, of which the run chooses the
// one that is nearer to the quaternion of the frame before. In the first frame it is the one with
// w >= 0. That one is also chosen where neither is nearer, because the two are as far from the
// frame before.
class QuaternionRun {
  public:
    // x, y, z, w.
    using Value = std::array<double, 4>;

    QuaternionRun() = default;
    // Chooses the quaternion of the first frame as if `before` came before it.
    explicit QuaternionRun(const Value& before) : last_(before), hasLast_(true) {}

    // Negates quaternions of the first `count` lanes, which are the next frames of the run.
    void Continue(math::PoseLanes& pose, std::size_t count);

    // Returns how many quaternions of this run, from the first on, are to be negated because the
    // run `before` comes before it, and continues this run as if the caller had negated them.
    // `before` may have no frames.
    std::size_t Follow(const QuaternionRun& before);

    // Joins runs whose frames follow each other, and which different threads may have made. Returns
    // for each run how many of its quaternions, from the first on, are to be negated, as if only
    // the first run had got a value before its first frame. `runs` are runs of a frame or more.
    static std::vector<std::size_t> Join(std::span<const QuaternionRun> runs);

  private:
    Value first_{};
    Value last_{};
    bool hasLast_ = false;
    std::size_t frames_ = 0;
    // How many frames of the run depend on the frame before the run. The others follow a frame
    // where neither quaternion was nearer.
    std::size_t dependent_ = 0;
    bool isDecided_ = false;
};

}  // namespace exporters
