#include "survey/bvh_writer.h"

#include <algorithm>
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

constexpr std::string_view kChannelNames[] = {"Xposition", "Yposition", "Zposition",
                                              "Xrotation", "Yrotation", "Zrotation"};

class SectionWriter {
  public:
    SectionWriter(const BvhPart& part, LineWriter& writer)
        : part_(part), section_(part.section), writer_(writer) {}

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

    void WriteMotion(std::string_view text, double frameTime) {
        const BvhMotionHeader& motion = section_.motion;
        const bool isStated = motion.present && motion.frameTime && *motion.frameTime > 0.0;
        Line(motion.at.line, "MOTION");
        Line(motion.framesAt.line, "Frames: " + std::to_string(part_.frames.Count()));
        Line(motion.timeAt.line,
             "Frame Time: " + (isStated ? motion.timeWord : text::NumberText(frameTime)));
        const std::size_t threads = threads::CountFor(part_.frames.values.size() * kBytesPerValue);
        WriteMendedRows(section_, part_.plan, part_.frames, text, threads, writer_.Text());
        for (const BvhRow& row : part_.frames.rows) {
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
    LineWriter& writer_;
    std::vector<std::uint32_t> open_;
};

}  // namespace

void WriteSection(const BvhPart& part, std::string_view text, double frameTime, bool needsMotion,
                  LineWriter& writer) {
    SectionWriter section(part, writer);
    section.WriteHierarchy();
    if (part.section.motion.present || needsMotion) section.WriteMotion(text, frameTime);
}

}  // namespace survey
