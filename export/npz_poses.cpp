#include "export/npz_poses.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <fmt/format.h>
#include <utility>
#include <vector>

#include "export/block_parts.h"
#include "export/crc32.h"
#include "export/pose_arrays.h"
#include "export/run_parts.h"
#include "threads/block_order.h"

namespace exporters {
namespace {

// The share of the time that computing the poses takes if all of them are computed first.
constexpr double kPosesShare = 0.6;

struct ArrayKind {
    const char* name;
    std::size_t width;  // how many numbers a pose has in the array
};

constexpr std::array<ArrayKind, 4> kArrays = {
    {{"positions", 3}, {"quaternions", 4}, {"local_positions", 3}, {"local_quaternions", 4}}};

std::string ShapeOf(const TableBlocks& blocks, std::size_t width) {
    return fmt::format("({}, {}, {})", blocks.Rows(), blocks.Columns(), width);
}

template <class Element>
void AddAtOnce(ArrayWriter& arrays, const TableBlocks& blocks, const Progress& progress) {
    PoseArrays<Element> poses =
        BuildPoseArrays<Element>(blocks, progress.Between(0.0, kPosesShare));
    const Progress writing = progress.Between(kPosesShare, 1.0);
    std::array<LargeArray<Element>*, 4> numbers = {&poses.positions, &poses.quaternions,
                                                   &poses.localPositions, &poses.localQuaternions};
    for (std::size_t index = 0; index < numbers.size(); ++index) {
        if (index > 0) writing.Report(index, numbers.size());
        arrays.AddNumbers(kArrays[index].name, ShapeOf(blocks, kArrays[index].width),
                          std::move(*numbers[index]));
    }
}

// Writes the four arrays at the same time.
template <class Element>
class PoseWriter {
  public:
    PoseWriter(ArrayWriter& arrays, const TableBlocks& blocks)
        : blocks_(blocks), columns_(blocks.Columns()) {
        before_.Resize(columns_);
        for (const ArrayKind& kind : kArrays)
            arrays_.push_back(
                arrays.AddLater(kind.name, NpyType(Element()), ShapeOf(blocks, kind.width),
                                sizeof(Element) * kind.width * blocks.Rows() * columns_));
    }

    void Write(const Progress& progress) {
        enum Step : std::size_t { Quaternions, Numbers, Steps };
        const std::size_t rows = blocks_.Rows();
        const std::size_t share =
            FramesAtOnce(std::max<std::size_t>(14 * columns_ * sizeof(Element), 1));
        std::vector<Part> parts(PartsFor(rows * columns_));
        threads::BlockOrder order(Steps);
        order.Run((rows + share - 1) / share, parts.size(),
                  [&](std::size_t thread, std::size_t block) {
                      Part& part = parts[thread];
                      part.first = block * share;
                      part.end = std::min(part.first + share, rows);
                      // Only the calling thread reports progress.
                      Compute(part, thread == 0 ? progress : Progress());
                      order.InOrder(Quaternions, block, [&] { ChooseQuaternions(part); });
                      Negate(part);
                      ComputeCrcs(part);
                      order.InOrder(Numbers, block, [&] { Append(part); });
                  });
        for (LaterArray& array : arrays_)
            array.Finish();
    }

  private:
    // The rows that a thread works on.
    struct Part {
        std::size_t first = 0;
        std::size_t end = 0;
        std::array<std::vector<Element>, kArrays.size()> numbers;
        std::array<std::uint32_t, kArrays.size()> crcs{};
        PoseRuns runs;
        // For each column, how many of its first quaternions are to be negated.
        std::vector<std::size_t> negated;
        std::vector<std::size_t> negatedLocal;
        TableBlocks::Scratch scratch;
    };

    void Compute(Part& part, const Progress& progress) const {
        for (std::size_t array = 0; array < kArrays.size(); ++array)
            part.numbers[array].resize((part.end - part.first) * columns_ * kArrays[array].width);
        part.runs = {};
        part.runs.Resize(columns_);
        for (std::size_t row = part.first; row < part.end; row += math::kPoseLanes) {
            const std::size_t count = std::min(math::kPoseLanes, part.end - row);
            for (std::size_t passed = 0; passed < count; ++passed)
                progress.Report(row + passed, blocks_.Rows());
            const std::size_t index = (row - part.first) * columns_;
            FillRows(blocks_, row, count, part.runs, part.scratch,
                     PosePointers<Element>{
                         part.numbers[0].data() + 3 * index, part.numbers[1].data() + 4 * index,
                         part.numbers[2].data() + 3 * index, part.numbers[3].data() + 4 * index});
        }
    }

    // Finds out which quaternions are not nearest to those of the rows before the part.
    void ChooseQuaternions(Part& part) {
        part.negated.resize(columns_);
        part.negatedLocal.resize(columns_);
        for (std::size_t column = 0; column < columns_; ++column) {
            part.negated[column] = part.runs.global[column].Follow(before_.global[column]);
            part.negatedLocal[column] = part.runs.local[column].Follow(before_.local[column]);
        }
        before_ = part.runs;
    }

    void Negate(Part& part) const {
        for (std::size_t column = 0; column < columns_; ++column) {
            NegateRows(part.negated[column], columns_, part.numbers[1].data() + 4 * column);
            NegateRows(part.negatedLocal[column], columns_, part.numbers[3].data() + 4 * column);
        }
    }

    void ComputeCrcs(Part& part) const {
        for (std::size_t array = 0; array < kArrays.size(); ++array)
            part.crcs[array] = Crc32(0, BytesOf(part.numbers[array]));
    }

    void Append(const Part& part) {
        for (std::size_t array = 0; array < kArrays.size(); ++array)
            arrays_[array].Append(BytesOf(part.numbers[array]), part.crcs[array]);
    }

    const TableBlocks& blocks_;
    std::size_t columns_;
    std::vector<LaterArray> arrays_;
    PoseRuns before_;  // the rows before the ones whose quaternions are chosen next
};

template <class Element>
void AddPosesOf(ArrayWriter& arrays, const TableBlocks& blocks, const Progress& progress) {
    if (arrays.CanAddLater())
        PoseWriter<Element>(arrays, blocks).Write(progress);
    else
        AddAtOnce<Element>(arrays, blocks, progress);
}

}  // namespace

void AddPoses(ArrayWriter& arrays, const TableBlocks& blocks, bool areFloats,
              const Progress& progress) {
    if (areFloats)
        AddPosesOf<float>(arrays, blocks, progress);
    else
        AddPosesOf<double>(arrays, blocks, progress);
}

}  // namespace exporters
