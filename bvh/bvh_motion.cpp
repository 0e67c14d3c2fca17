// Parses the MOTION of a section: a header, then one value for each channel and frame.
#include <numeric>
#include <vector>

#include "bvh/bvh_parser.h"
#include "bvh/value_polls.h"
#include "host/status.h"
#include "mocap/row_blocks.h"
#include "textio/row_reader.h"
#include "threads/thread_count.h"

using namespace Zelk::status;

namespace {

// Returns the times of the keys: 1, 2, 3 and so on. Returns null when memory runs out.
KeyArray::Numbers FrameNumbers(std::uint32_t count) {
    KeyArray::Numbers times = AllocateNumbers(count);
    if (times) std::iota(times.get(), times.get() + count, 1.0);
    return times;
}

// Reads a row of one line.
class LineReader : public RowBlocks::Reader {
  public:
    explicit LineReader(const textio::RowTarget& target) : target_(target) {}
    const char* ReadRow(const char* at, const char* last, std::size_t row) const noexcept override {
        return textio::ReadRow(at, last, target_, row);
    }

  private:
    const textio::RowTarget& target_;
};

}  // namespace

// motion = header { value }
std::int32_t BvhParser::ParseMotion() {
    const std::int32_t status = ParseFrameHeader();
    if (status < 0) return status;
    if (skeleton.channelCount == 0) {
        if (skeleton.frameCount == 0) return kOk;
        return Fail(kNoData, L"Missing FCurves for animation CHANNELS");
    }
    monitor.BeginValues();
    // If the frame count is too large for the file, no memory for keys is allocated. The values are
    // then parsed but not stored, and parsing fails after the last value of the file.
    if (!CanHoldFrames()) return ParseFrames(nullptr);

    const KeyArray::Numbers times = FrameNumbers(skeleton.frameCount);
    if (!times) return FailForMemory();
    std::vector<KeyArray> keys =
        AllocateKeyArrays(skeleton.channelCount, skeleton.frameCount, times);
    if (keys.empty()) return FailForMemory();
    const std::int32_t read = ParseFrames(&keys);
    if (read < 0) return read;
    auto next = keys.begin();
    for (KeyArray* slot : keySlots)
        *slot = std::move(*next++);
    return kOk;
}

// header = "Frames:" count "Frame" "Time:" seconds
std::int32_t BvhParser::ParseFrameHeader() {
    if (!ConsumeKeyword("Frames:")) return Fail(kInvalidData, L"Expected a 'Frames:' token");
    int frames = 0;
    if (!stringFile.GetNextInt(frames))
        return Fail(kInvalidData, L"Expected an integer value for Frames count");
    skeleton.frameCount = static_cast<std::uint32_t>(frames);
    if (!ConsumeKeyword("Frame") || !ConsumeKeyword("Time:"))
        return Fail(kInvalidData, L"Expected a 'Frame Time:' token");
    if (!stringFile.GetNextFloat(frameTime))
        return Fail(kInvalidData, L"Expected a float value for Frame Time");
    return kOk;
}

// Each value takes at least two bytes: one character and one separator. The last value needs no
// separator.
bool BvhParser::CanHoldFrames() const {
    const std::uint64_t values = std::uint64_t{skeleton.channelCount} * skeleton.frameCount;
    const std::uint64_t bytes = stringFile.GetSize() - stringFile.GetPosition();
    return values <= (bytes + 1) / 2;
}

// The file has the values frame by frame, in the order of the channels.
std::int32_t BvhParser::ParseFrames(const std::vector<KeyArray>* keys) {
    const ValuePolls polls(skeleton.channelCount * skeleton.frameCount, kValueSteps);
    std::uint32_t frame = 0;
    if (keys != nullptr && readsRows) {
        const std::int32_t status = ParseRows(*keys, polls, frame);
        if (status < 0) return status;
    }
    std::uint32_t untilPoll = polls.After(std::uint64_t{frame} * skeleton.channelCount);
    for (; frame < skeleton.frameCount; ++frame) {
        for (std::uint32_t channel = 0; channel < skeleton.channelCount; ++channel) {
            double value = 0.0;
            if (!stringFile.GetNextFloat(value))
                return Fail(kInvalidData, L"Expected a float value in key frame data");
            if (keys != nullptr) (*keys)[channel].Values().get()[frame] = value;
            if (--untilPoll > 0) continue;
            untilPoll = polls.Step();
            if (CheckCancelled()) return kCancelled;
            monitor.Advance(1);
        }
    }
    return kOk;
}

// Polls the monitor as often, and after the same values, as if the values were parsed one by one.
class BvhParser::RowPolls : public RowBlocks::Listener {
  public:
    RowPolls(ParseMonitor& monitor, const ValuePolls& polls, std::uint64_t width)
        : monitor_(monitor), polls_(polls), width_(width) {}

    bool HasRead(std::size_t rows) override {
        for (const std::uint64_t due = polls_.Within(rows * width_); done_ < due; ++done_) {
            if (monitor_.IsCancelled()) {
                isCancelled_ = true;
                return false;
            }
            monitor_.Advance(1);
        }
        return true;
    }

    bool IsCancelled() const { return isCancelled_; }
    // The number of values before the poll that cancelled the parser.
    std::uint64_t ValuesBeforeCancel() const { return (done_ + 1) * polls_.Step(); }

  private:
    ParseMonitor& monitor_;
    const ValuePolls& polls_;
    std::uint64_t width_;
    std::uint64_t done_ = 0;
    bool isCancelled_ = false;
};

// Nearly every file has one line for each frame. Such lines are read in blocks, on several threads,
// and not by the reader. Afterwards, the reader is moved to where it would be if it had read the
// values.
std::int32_t BvhParser::ParseRows(const std::vector<KeyArray>& keys, const ValuePolls& polls,
                                  std::uint32_t& frames) {
    std::vector<double*> columns;
    columns.reserve(keys.size());
    for (const KeyArray& channel : keys)
        columns.push_back(channel.Values().get());
    const textio::RowTarget target{columns.data(), columns.size()};

    const char* const text = stringFile.GetBuffer();
    const char* const last = text + stringFile.GetSize();
    const char* const first = textio::SkipToRow(text + stringFile.GetPosition());
    const LineReader reader(target);
    RowBlocks blocks(first, last, reader, 1, skeleton.frameCount);
    RowPolls rowPolls(monitor, polls, columns.size());
    blocks.Read(threads::CountFor(static_cast<std::uint64_t>(last - first)), rowPolls);

    const auto moveTo = [&](std::uint64_t values) {
        const std::uint64_t row = (values - 1) / columns.size();
        const char* const start = blocks.StartOf(static_cast<std::size_t>(row));
        stringFile.SetPosition(static_cast<std::uint32_t>(start - text));
        double value = 0.0;
        for (std::uint64_t left = values - row * columns.size(); left > 0; --left)
            stringFile.GetNextFloat(value);
    };
    if (rowPolls.IsCancelled()) {
        moveTo(rowPolls.ValuesBeforeCancel());
        return FailForCancel();
    }
    if (blocks.RowsRead() > 0) moveTo(blocks.RowsRead() * columns.size());
    frames = static_cast<std::uint32_t>(blocks.RowsRead());
    return kOk;
}
