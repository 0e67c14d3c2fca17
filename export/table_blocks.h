// Computes the poses of a table for many rows at a time.
// Internal to export/.
#pragma once

#include <cstddef>
#include <vector>

#include "export/pose_blocks.h"
#include "export/tables.h"
#include "math/pose_lanes.h"

namespace exporters {

// The poses are those of Table::Row, as quaternions. The columns come one after the other, so that
// only the poses above the current one are kept.
class TableBlocks {
  public:
    // Keeps references to the table and to the scene. The other arguments are those that the table
    // was made with.
    TableBlocks(const Table& table, const headless::Scene& scene, const Options& options);

    std::size_t Rows() const { return table_.Rows(); }
    std::size_t Columns() const { return depths_.size(); }

    struct Scratch {
        math::PoseLanes local;
        std::vector<math::PoseLanes> globals;  // for each depth under the top joints
        std::vector<PoseBlocks::Scratch> models;
    };
    // Calls use(column, local, global) for each column, with the local and the global poses in
    // `count` rows, from 1 to math::kPoseLanes, from the row `first` on; they are scaled and
    // turned. `use` may change the poses of `local`. Several threads may call this at the same
    // time, each with a Scratch of its own. Throws ExportError if a pose is not finite.
    template <class Use>
    void ForEach(std::size_t first, std::size_t count, Scratch& scratch, const Use& use) const {
        Begin(first, count, scratch);
        for (std::size_t column = 0; column < depths_.size(); ++column)
            use(column, scratch.local, Compute(column, scratch));
    }

  private:
    void Begin(std::size_t first, std::size_t count, Scratch& scratch) const;
    // Computes the local poses of a column in scratch.local and returns its global poses.
    const math::PoseLanes& Compute(std::size_t column, Scratch& scratch) const;
    // Throws an ExportError that names the first frame whose poses are not finite.
    [[noreturn]] void Refuse(std::size_t first, std::size_t count) const;

    const Table& table_;
    std::vector<PoseBlocks> models_;
    std::vector<std::size_t> modelOf_;  // for each column
    std::vector<std::size_t> jointOf_;  // for each column, its index among the joints of its model
    std::vector<std::size_t> depths_;   // for each column, how many joints are above it
    std::size_t deepest_ = 0;
};

}  // namespace exporters
