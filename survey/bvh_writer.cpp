#include "survey/bvh_writer.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "survey/bvh_mended_rows.h"
#include "survey/bvh_row_writer.h"
#include "text/number_text.h"
#include "threads/thread_count.h"

namespace survey {
namespace {

// The most tabs that a line is indented by.
constexpr std::size_t kDeepest = 32;
// Writing a value takes about as long as reading so many bytes.
constexpr std::size_t kBytesPerValue = 16;

// A re-expressed angle, such as "-123.123456789012 ", seldom has more bytes.
constexpr std::size_t kReexpressedBytes = 20;
// What mending adds to a joint's lines is seldom longer.
constexpr std::size_t kJointBytes = 256;

constexpr std::string_view kChannelNames[] = {"Xposition", "Yposition", "Zposition",
                                              "Xrotation", "Yrotation", "Zrotation"};

class SectionWriter {
  public:
    SectionWriter(const BvhPart& part, const BvhFrames& frames, LineWriter& writer)
        : part_(part), section_(part.section), frames_(frames), writer_(writer) {}

    void WriteHierarchy() {
        Line(section_.at.line, "HIERARCHY");
        for (std::uint32_t i = 0; i < section_.joints.size(); ++i) {
            while (!open_.empty() && open_.back() != section_.joints[i].parent)
                Close();
            Open(i);
        }
        while (!open_.empty())
            Close();
    }

    void WriteMotion(std::string_view text) {
        const BvhMotionHeader& motion = section_.motion;
        const bool isStated = motion.present && motion.frameTime && *motion.frameTime > 0.0;
        Line(motion.at.line, "MOTION");
        Line(motion.framesAt.line, "Frames: " + std::to_string(frames_.Count()));
        Line(motion.timeAt.line,
             "Frame Time: " + (isStated ? motion.timeWord : text::NumberText(part_.frameTime)));
        const std::size_t values = frames_.Count() * frames_.channels;
        WriteMendedRows(section_, part_.plan, frames_, text,
                        threads::CountFor(values * kBytesPerValue), writer_.Flush());
        for (const BvhRow& row : frames_.rows) {
            writer_.From(row.line);
            writer_.CountLine();
        }
    }

  private:
    void Open(std::uint32_t index) {
        const BvhJoint& joint = section_.joints[index];
        const BvhJointPlan& plan = part_.plan.joints[index];
        if (joint.isEndSite)
            Line(joint.keyword.line, "End Site");
        else
            Line(joint.keyword.line, (joint.parent == kNoParent ? "ROOT " : "JOINT ") + joint.name);
        Line(joint.brace.line, "{");
        open_.push_back(index);
        Line(joint.offsetAt.line, "OFFSET" + Offset(joint, plan));
        WriteChannels(index);
        if (!plan.addsEndSite) return;
        Line(0, "End Site");
        Line(0, "{");
        open_.push_back(index);
        Line(0, "OFFSET" + Numbers(plan.endSiteOffset));
        open_.pop_back();
        Line(0, "}");
    }

    void Close() {
        const BvhJoint& joint = section_.joints[open_.back()];
        open_.pop_back();
        Line(joint.end.line, "}");
    }

    static std::string Offset(const BvhJoint& joint, const BvhJointPlan& plan) {
        if (plan.clearsOffset) return " 0 0 0";
        std::string numbers;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const bool isNew = plan.foldsPositions && plan.offset[axis] != joint.offset[axis];
            const double number = isNew ? plan.offset[axis] : joint.offset[axis];
            numbers += ' ';
            if (isNew || joint.offsetWords[axis].empty())
                numbers += text::NumberText(number);
            else
                numbers += joint.offsetWords[axis];
        }
        return numbers;
    }

    static std::string Numbers(const std::array<double, 3>& offset) {
        std::string numbers;
        for (const double number : offset)
            numbers += ' ' + text::NumberText(number);
        return numbers;
    }

    void WriteChannels(std::size_t index) {
        const BvhJoint& joint = section_.joints[index];
        if (!joint.hasChannels) return;
        const auto columns = PlannedColumns(section_, part_.plan, index);
        std::string line = "CHANNELS " + std::to_string(columns.size());
        for (const BvhColumn& column : columns) {
            line += ' ';
            line += kChannelNames[static_cast<std::size_t>(column.channel)];
        }
        Line(joint.channelsAt.line, line);
    }

    // Writes an indented line. `original` is the number of this line in the file, or 0 if the file
    // has no such line.
    void Line(std::size_t original, std::string_view text) {
        writer_.From(original);
        writer_.Text().append(std::min(open_.size(), kDeepest), '\t');
        writer_.Text() += text;
        writer_.EndLine();
    }

    const BvhPart& part_;
    const BvhSection& section_;
    const BvhFrames& frames_;
    LineWriter& writer_;
    std::vector<std::uint32_t> open_;
};

}  // namespace

void WriteSection(const BvhPart& part, const BvhFrames& frames, std::string_view text,
                  bool needsMotion, LineWriter& writer) {
    SectionWriter section(part, frames, writer);
    section.WriteHierarchy();
    if (part.section.motion.present || needsMotion) section.WriteMotion(text);
}

std::uint64_t LikelyNewBytes(const BvhPart& part) {
    std::size_t inRow = 0;
    for (std::size_t joint = 0; joint < part.section.joints.size(); ++joint)
        for (const BvhColumn& column : PlannedColumns(part.section, part.plan, joint))
            inRow += column.kind == BvhColumn::Kind::AsWritten     ? 0
                     : column.kind == BvhColumn::Kind::Reexpressed ? kReexpressedBytes
                                                                   : text::kLongestNumber;
    return std::uint64_t{part.rowCount} * inRow + part.section.joints.size() * kJointBytes;
}

}  // namespace survey
