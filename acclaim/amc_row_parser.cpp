// Parses the frames of an AMC file in rows, on several threads. The frames before the first row,
// and from the first frame on that is not a row, are parsed one by one.
#include <algorithm>
#include <limits>

#include "acclaim/acclaim_parser.h"
#include "acclaim/amc_motion.h"
#include "acclaim/amc_rows.h"
#include "host/status.h"
#include "mocap/row_blocks.h"
#include "textio/row_reader.h"
#include "threads/thread_count.h"

using namespace Zelk::status;

class AcclaimParser::RowConverter : public AmcRowReader::Converter {
  public:
    explicit RowConverter(const AcclaimParser& parser) : parser_(parser) {}
    bool Changes(const CHANNELS& channel) const noexcept override {
        const bool isLimited = parser_.applyLimits && (channel.hasMinLimit || channel.hasMaxLimit);
        const bool isRadian = !parser_.facts.degrees && IsRotation(channel.type);
        return isLimited || isRadian || channel.type == kBoneLength;
    }
    double Convert(const CHANNELS& channel, double value) const noexcept override {
        return parser_.ConvertValue(channel, value);
    }

  private:
    const AcclaimParser& parser_;
};

// Polls the monitor before each value, as if the values were parsed one by one.
class AcclaimParser::RowPolls : public RowBlocks::Listener {
  public:
    RowPolls(ParseMonitor& monitor, std::size_t values)
        : monitor_(monitor), isPolled_(monitor.IsPolled()), values_(values) {}

    bool HasRead(std::size_t rows) override {
        if (!isPolled_) return true;
        for (; row_ < rows; ++row_)
            for (value_ = 0; value_ < values_; ++value_)
                if (monitor_.IsCancelled()) {
                    isCancelled_ = true;
                    return false;
                }
        return true;
    }

    bool IsCancelled() const { return isCancelled_; }
    // The row, and the value in the row, before which the parser was cancelled.
    std::size_t Row() const { return row_; }
    std::size_t Value() const { return value_; }

  private:
    ParseMonitor& monitor_;
    bool isPolled_;
    std::size_t values_;
    std::size_t row_ = 0;
    std::size_t value_ = 0;
    bool isCancelled_ = false;
};

bool AcclaimParser::AllocateRows(Motion& motion, std::size_t rows, const RowConverter& converter,
                                 AmcRowReader& reader) {
    AmcRows& read = motion.rows;
    read.first = motion.keys.Rows();
    const std::size_t capacity = read.first + rows;
    if (capacity > std::numeric_limits<std::uint32_t>::max()) return false;
    const auto count = static_cast<std::uint32_t>(capacity);
    const KeyArray::Numbers times = AllocateNumbers(count);
    motion.ignored = AllocateNumbers(count);
    if (!times || !motion.ignored) return false;
    const auto channels = static_cast<std::uint32_t>(motion.keys.Channels());
    read.keys = AllocateKeyArrays(channels, count, times);
    if (read.keys.empty()) return false;
    auto next = read.keys.begin();
    for (const MOCAPMODEL* bone : motion.slots) {
        std::vector<AmcRowReader::Value> values;
        for (const CHANNELS& channel : bone->channels) {
            if (channel.type == kEmptySlot) continue;
            const KeyArray::Numbers& numbers =
                IsAnimated(channel.type) ? (next++)->Values() : motion.ignored;
            values.push_back({&channel, numbers.get() + read.first});
        }
        reader.Add(values, converter);
    }
    reader.SetTimes(times.get() + read.first);
    read.capacity = capacity;
    return true;
}

// This is tried once. Most files have nothing but rows after their first frame.
std::int32_t AcclaimParser::ParseRows(Motion& motion) {
    if (motion.hasTriedRows || !readsRows) return kOk;
    motion.hasTriedRows = true;
    const char* const text = stringFile.GetBuffer();
    const char* const last = text + stringFile.GetSize();
    const char* const first = textio::SkipToRow(text + stringFile.GetPosition());
    const auto bytes = static_cast<std::size_t>(last - first);
    const std::size_t threads = threads::CountFor(bytes);

    // A value takes at least two bytes, and so does a frame number. The last value needs no
    // separator.
    const std::size_t shortest = 2 * (motion.keys.Channels() + 1);
    const std::size_t rows =
        std::min(CountRows(first, last, motion.slots.size() + 1, threads), (bytes + 1) / shortest);
    const RowConverter converter(*this);
    AmcRowReader reader;
    if (rows == 0 || !AllocateRows(motion, rows, converter, reader)) return kOk;
    RowBlocks blocks(first, last, reader, reader.Lines(), rows);
    RowPolls polls(monitor, reader.Values());
    blocks.Read(threads, polls);

    const auto moveTo = [&](std::size_t row, std::size_t values) {
        MoveInRow(motion, static_cast<std::uint32_t>(blocks.StartOf(row) - text), values);
    };
    const double* const times = motion.rows.keys.front().Times().get() + motion.rows.first;
    const std::size_t parsed = polls.IsCancelled() ? polls.Row() + 1 : blocks.RowsRead();
    for (std::size_t row = 0; row < parsed; ++row)
        NoteFrame(static_cast<std::uint32_t>(times[row]));
    if (polls.IsCancelled()) {
        moveTo(polls.Row(), polls.Value());
        return FailForCancel();
    }
    motion.rows.count = parsed;
    if (parsed > 0) moveTo(parsed - 1, reader.Values());
    return kOk;
}

void AcclaimParser::MoveInRow(const Motion& motion, std::uint32_t start, std::size_t values) {
    stringFile.SetPosition(start);
    int number = 0;
    stringFile.GetNextInt(number);
    for (const MOCAPMODEL* bone : motion.slots) {
        stringFile.GetNextString();
        for (const CHANNELS& channel : bone->channels) {
            if (channel.type == kEmptySlot) continue;
            if (values-- == 0) return;
            double value = 0.0;
            stringFile.GetNextFloat(value);
        }
    }
}
