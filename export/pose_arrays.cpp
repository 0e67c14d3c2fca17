#include "export/pose_arrays.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "export/block_parts.h"
#include "export/run_parts.h"

namespace exporters {
namespace {

using math::PoseLanes;

// The lanes of a block are copied to rows that are `width` numbers long.
template <std::size_t kParts, class Element>
void PutLanes(const double (&lanes)[kParts][math::kPoseLanes], std::size_t count, std::size_t width,
              Element* numbers) {
    for (std::size_t lane = 0; lane < count; ++lane, numbers += width)
        for (std::size_t part = 0; part < kParts; ++part)
            numbers[part] = static_cast<Element>(lanes[part][lane]);
}

// The rows that one thread computes.
struct Part {
    std::size_t first = 0;
    std::size_t end = 0;
    PoseRuns runs;
};

// As the threads run at the same time, only one of them reports progress, as if its rows were all.
template <class Element>
void FillPart(const TableBlocks& blocks, Part& part, const Progress& progress,
              const PosePointers<Element>& arrays) {
    const std::size_t columns = blocks.Columns();
    part.runs.Resize(columns);
    TableBlocks::Scratch scratch;
    for (std::size_t row = part.first; row < part.end; row += math::kPoseLanes) {
        const std::size_t count = std::min(math::kPoseLanes, part.end - row);
        for (std::size_t passed = 0; passed < count; ++passed)
            progress.Report(row + passed - part.first, part.end - part.first);
        const std::size_t index = row * columns;
        FillRows(blocks, row, count, part.runs, scratch,
                 PosePointers<Element>{arrays.positions + 3 * index, arrays.quaternions + 4 * index,
                                       arrays.localPositions + 3 * index,
                                       arrays.localQuaternions + 4 * index});
    }
}

// Makes the quaternions continuous from part to part.
template <class Element>
void JoinParts(const std::vector<Part>& parts, std::size_t columns,
               std::vector<QuaternionRun> PoseRuns::*member, Element* quaternions) {
    std::vector<QuaternionRun> runs(parts.size());
    for (std::size_t column = 0; column < columns; ++column) {
        for (std::size_t part = 0; part < parts.size(); ++part)
            runs[part] = (parts[part].runs.*member)[column];
        const std::vector<std::size_t> negated = QuaternionRun::Join(runs);
        for (std::size_t part = 0; part < parts.size(); ++part)
            NegateRows(negated[part], columns,
                       quaternions + 4 * (parts[part].first * columns + column));
    }
}

template <class Element>
void FillParts(const TableBlocks& blocks, const PosePointers<Element>& arrays, std::size_t threads,
               const Progress& progress) {
    std::vector<Part> parts;
    for (const auto& [first, end] : BlockParts(blocks.Rows(), blocks.Columns(), threads))
        parts.push_back({first, end, {}});
    RunParts(parts.size(), [&](std::size_t part) {
        FillPart(blocks, parts[part], part == 0 ? progress : Progress(), arrays);
    });
    JoinParts(parts, blocks.Columns(), &PoseRuns::global, arrays.quaternions);
    JoinParts(parts, blocks.Columns(), &PoseRuns::local, arrays.localQuaternions);
}

}  // namespace

template <class Element>
void FillRows(const TableBlocks& blocks, std::size_t first, std::size_t count, PoseRuns& runs,
              TableBlocks::Scratch& scratch, const PosePointers<Element>& to) {
    const std::size_t columns = blocks.Columns();
    PoseLanes turned;  // the global poses with the quaternions that were chosen
    blocks.ForEach(
        first, count, scratch, [&](std::size_t column, PoseLanes& local, const PoseLanes& global) {
            turned = global;
            runs.global[column].Continue(turned, count);
            runs.local[column].Continue(local, count);
            PutLanes(turned.position, count, 3 * columns, to.positions + 3 * column);
            PutLanes(turned.rotation, count, 4 * columns, to.quaternions + 4 * column);
            PutLanes(local.position, count, 3 * columns, to.localPositions + 3 * column);
            PutLanes(local.rotation, count, 4 * columns, to.localQuaternions + 4 * column);
        });
}

template <class Element>
void FillPoseArrays(const TableBlocks& blocks, const PosePointers<Element>& arrays,
                    std::size_t threads, const Progress& progress) {
    FillParts(blocks, arrays, threads, progress);
}

template <class Element>
PoseArrays<Element> BuildPoseArrays(const TableBlocks& blocks, const Progress& progress) {
    const std::size_t poses = blocks.Rows() * blocks.Columns();
    PoseArrays<Element> arrays{LargeArray<Element>(3 * poses), LargeArray<Element>(4 * poses),
                               LargeArray<Element>(3 * poses), LargeArray<Element>(4 * poses)};
    if (poses == 0) return arrays;
    const PosePointers<Element> pointers{&arrays.positions[0], &arrays.quaternions[0],
                                         &arrays.localPositions[0], &arrays.localQuaternions[0]};
    FillPoseArrays(blocks, pointers, 0, progress);
    return arrays;
}

template void FillRows(const TableBlocks& blocks, std::size_t first, std::size_t count,
                       PoseRuns& runs, TableBlocks::Scratch& scratch,
                       const PosePointers<float>& to);
template void FillRows(const TableBlocks& blocks, std::size_t first, std::size_t count,
                       PoseRuns& runs, TableBlocks::Scratch& scratch,
                       const PosePointers<double>& to);
template void FillPoseArrays(const TableBlocks& blocks, const PosePointers<double>& arrays,
                             std::size_t threads, const Progress& progress);
template PoseArrays<float> BuildPoseArrays(const TableBlocks& blocks, const Progress& progress);
template PoseArrays<double> BuildPoseArrays(const TableBlocks& blocks, const Progress& progress);

}  // namespace exporters
