#include "survey/bvh_mended_rows.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "survey/bvh_plain_rows.h"
#include "survey/bvh_rotations.h"
#include "survey/bvh_row_writer.h"
#include "threads/block_order.h"

namespace survey {
namespace {

// A block is about as long as this many values, if that is not too few or too many frames.
constexpr std::size_t kValuesAtOnce = 8192;
constexpr std::size_t kFewestFrames = 32;

// The steps that are done in the order of the frames.
enum Step : std::size_t { kFollow, kAppend, kSteps };

// What a thread needs for the block that it works on. The memory is used again for its next block.
struct Worker {
    BvhRowWriter writer;
    std::vector<ListedBlock> blocks;  // one for each of the joints
    std::vector<double> values;       // of one frame after the other, if they had to be read
    std::vector<double> angles;       // of one frame after the other
    std::vector<char> rows;
};

class MendedRows {
  public:
    MendedRows(const BvhSection& section, const BvhPlan& plan, const BvhFrames& frames,
               std::string_view text, text::ByteSink& out)
        : frames_(frames),
          plainValues_(frames, text),
          out_(out),
          atOnce_(std::clamp(kValuesAtOnce / std::max<std::size_t>(frames.channels, 1),
                             kFewestFrames, kFramesInBlock)),
          firstWriter_(section, plan, text) {
        for (const std::size_t joint : ReexpressedJoints(plan))
            joints_.emplace_back(section.joints[joint]);
    }

    void Write(std::size_t threads) {
        const std::size_t blocks = (frames_.Count() + atOnce_ - 1) / atOnce_;
        std::vector<Worker> workers;
        for (std::size_t i = 0; i < std::min(threads, blocks); ++i)
            workers.push_back(
                {firstWriter_,
                 std::vector<ListedBlock>(joints_.size()),
                 std::vector<double>(frames_.IsRead() ? 0 : frames_.channels * atOnce_),
                 std::vector<double>(3 * joints_.size() * atOnce_),
                 {}});
        threads::BlockOrder order(kSteps);
        order.Run(blocks, workers.size(), [&](std::size_t thread, std::size_t block) {
            WriteBlock(order, block, workers[thread]);
        });
    }

  private:
    // A joint's angles in a frame depend on its angles in the frame before. Only the choice between
    // angles of the same rotation has to wait for the frames before, and it takes little time.
    void WriteBlock(threads::BlockOrder& order, std::size_t block, Worker& worker) {
        const std::size_t first = block * atOnce_;
        const std::size_t count = std::min(atOnce_, frames_.Count() - first);
        const FrameRows rows = {ValuesOf(first, count, worker), frames_.channels, count};
        const std::size_t width = 3 * joints_.size();
        for (std::size_t i = 0; i < joints_.size(); ++i)
            joints_[i].Compute(rows, worker.blocks[i]);
        order.InOrder(kFollow, block, [&] {
            for (std::size_t i = 0; i < joints_.size(); ++i)
                joints_[i].Follow(rows, worker.blocks[i], worker.angles.data() + 3 * i, width);
        });
        std::size_t size = 0;
        for (std::size_t i = 0; i < count; ++i)
            size = worker.writer.Write(frames_.rows[first + i], rows.first + i * rows.stride,
                                       worker.angles.data() + i * width, worker.rows, size);
        order.InOrder(kAppend, block, [&] { out_.Write({worker.rows.data(), size}); });
    }

    const double* ValuesOf(std::size_t first, std::size_t count, Worker& worker) const {
        if (frames_.IsRead()) return frames_.Frame(first);
        plainValues_.Read(first, count, worker.values.data());
        return worker.values.data();
    }

    const BvhFrames& frames_;
    const PlainRowValues plainValues_;
    text::ByteSink& out_;
    const std::size_t atOnce_;  // the number of frames of a block, except perhaps the last one
    const BvhRowWriter firstWriter_;  // those of the workers are copies
    std::vector<ReexpressedAngles> joints_;
};

}  // namespace

void WriteMendedRows(const BvhSection& section, const BvhPlan& plan, const BvhFrames& frames,
                     std::string_view text, std::size_t threads, text::ByteSink& out) {
    MendedRows(section, plan, frames, text, out).Write(threads);
}

}  // namespace survey
