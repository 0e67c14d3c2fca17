#include "survey/bvh_row_writer.h"

#include <algorithm>
#include <cstring>

#include "survey/bvh_lines.h"
#include "survey/number_word.h"
#include "text/number_text.h"

namespace survey {
namespace {

constexpr int kAngleDecimals = 12;  // the most decimals of a re-expressed angle

// Makes the column of a re-expressed angle. `index` is 0, 1 or 2: its index among the three angles
// of its joint. The order of the angles is x y z if `rises`, otherwise z y x.
BvhColumn Reexpressed(std::size_t index, bool rises) {
    constexpr BvhChannel kOrder[] = {BvhChannel::RotationX, BvhChannel::RotationY,
                                     BvhChannel::RotationZ};
    return {BvhColumn::Kind::Reexpressed, kOrder[rises ? index : 2 - index], index, 0.0};
}

// Adds a constant column for each component of OFFSET that is not 0 and has no position channel.
void AddMissingPositions(const BvhJoint& joint, std::vector<BvhColumn>& columns) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const auto channel = static_cast<BvhChannel>(axis);
        const bool isListed = std::any_of(columns.begin(), columns.end(), [&](const auto& column) {
            return column.channel == channel;
        });
        if (!isListed && joint.offset[axis] != 0.0)
            columns.push_back({BvhColumn::Kind::Constant, channel, 0, joint.offset[axis]});
    }
}

}  // namespace

std::vector<BvhColumn> PlannedColumns(const BvhSection& section, const BvhPlan& whole,
                                      std::size_t index) {
    const BvhJoint& joint = section.joints[index];
    const BvhJointPlan& plan = whole.joints[index];
    std::vector<BvhColumn> columns;
    std::size_t reexpressed = 0;
    for (std::size_t i = 0; i < joint.channelCount; ++i) {
        const BvhChannel channel = joint.channels[i];
        const std::size_t value = joint.firstValue + i;
        if (IsRotation(channel)) {
            if (plan.dropsRotations) continue;
            columns.push_back(plan.reexpressesRotations
                                  ? Reexpressed(reexpressed++, whole.listsXyz)
                                  : BvhColumn{BvhColumn::Kind::AsWritten, channel, value, 0});
        } else if (!plan.foldsPositions) {
            const double offset = whole.addsOffsets ? joint.offset[AxisOf(channel)] : 0.0;
            const auto kind = offset != 0.0 ? BvhColumn::Kind::Added : BvhColumn::Kind::AsWritten;
            columns.push_back({kind, channel, value, offset});
        }
    }
    // Two listed rotations become three angles, so a third column follows the two.
    if (reexpressed == 2) {
        const auto last = std::find_if(columns.rbegin(), columns.rend(), [](const auto& column) {
            return column.kind == BvhColumn::Kind::Reexpressed;
        });
        columns.insert(last.base(), Reexpressed(2, whole.listsXyz));
    }
    if (plan.clearsOffset) AddMissingPositions(joint, columns);
    return columns;
}

std::vector<std::size_t> ReexpressedJoints(const BvhPlan& plan) {
    std::vector<std::size_t> joints;
    for (std::size_t joint = 0; joint < plan.joints.size(); ++joint)
        if (plan.joints[joint].reexpressesRotations && !plan.joints[joint].dropsRotations)
            joints.push_back(joint);
    return joints;
}

BvhRowWriter::BvhRowWriter(const BvhSection& section, const BvhPlan& plan, std::string_view text)
    : textEnd_(text.data() + text.size()) {
    for (std::size_t i = 0; i < section.joints.size(); ++i) {
        const auto own = PlannedColumns(section, plan, i);
        columns_.insert(columns_.end(), own.begin(), own.end());
    }
    for (const BvhColumn& column : columns_)
        if (column.kind == BvhColumn::Kind::AsWritten)
            wordsNeeded_ = std::max(wordsNeeded_, column.value + 1);
}

// Fills `words_` with the row's values as they are written in the file, one word for each.
void BvhRowWriter::ReadWords(const BvhRow& row) {
    words_.clear();
    RowWords words(row.at, textEnd_);
    while (words_.size() < wordsNeeded_) {
        const std::string_view word = words.Next();
        double value = 0.0;
        if (!row.isSplit || ReadRowWord(word, value) != WordKind::Glued) {
            words_.push_back(word);
            continue;
        }
        for (const std::string_view part : SplitGlued(word))
            words_.push_back(part);
    }
}

std::size_t BvhRowWriter::Write(const BvhRow& row, const double* values, const double* angles,
                                std::vector<char>& out, std::size_t size) {
    ReadWords(row);
    std::size_t longest = columns_.size() * (text::kLongestNumber + 1) + 1;
    for (const std::string_view word : words_)
        longest += word.size();
    if (out.size() < size + longest) out.resize(2 * (size + longest));
    char* const first = out.data() + size;
    char* last = first;
    angles_ = angles;
    for (const BvhColumn& column : columns_) {
        last = WriteColumn(column, row, values, last);
        *last++ = ' ';
    }
    if (last > first) --last;
    *last++ = '\n';
    return static_cast<std::size_t>(last - out.data());
}

char* BvhRowWriter::WriteColumn(const BvhColumn& column, const BvhRow& row, const double* values,
                                char* out) {
    switch (column.kind) {
        case BvhColumn::Kind::Reexpressed:
            out = text::WriteNumber(out, angles_[AxisOf(column.channel)], kAngleDecimals);
            // After a joint's third angle, moves on to the angles of the next joint.
            if (column.value == 2) angles_ += 3;
            return out;
        case BvhColumn::Kind::Constant:
            return text::WriteNumber(out, column.number, text::kMostDecimals + 1);
        case BvhColumn::Kind::Added:
            return text::WriteNumber(out, values[column.value] + column.number,
                                     text::kMostDecimals + 1);
        case BvhColumn::Kind::AsWritten:
            break;
    }
    const std::string_view word = words_[column.value];
    double value = 0.0;
    const bool isAsWritten =
        row.isPlain || (ReadRowWord(word, value) == WordKind::Number && IsPlainWord(word, value));
    if (!isAsWritten) return text::WriteNumber(out, values[column.value], text::kMostDecimals + 1);
    std::memcpy(out, word.data(), word.size());
    return out + word.size();
}

}  // namespace survey
