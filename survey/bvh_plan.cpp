#include "survey/bvh_plan.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include "survey/bvh_hierarchy_reader.h"
#include "survey/bvh_walk.h"
#include "survey/codes.h"

namespace survey {
namespace {

// Each of the following three limits is multiplied by the figure's size.
constexpr double kConstantRange = 1e-6;  // the most that a constant position varies
constexpr double kRelativeRange = 1e-4;  // the most that a relative position differs from 0
constexpr double kLeastOffset = 2e-4;    // a shorter OFFSET counts as 0
// An added end site has this part of the joint's own offset as its offset.
constexpr double kEndSiteOfOffset = 0.25;
// If the joint's own offset is 0, the end site's offset has this part of the figure's size as its
// length.
constexpr double kEndSiteOfBox = 0.05;

// The joint's rotations in the order of its channels, such as "x y z".
std::string Listed(const BvhJoint& joint) {
    std::string listed;
    for (std::size_t i = 0; i < joint.channelCount; ++i) {
        if (!IsRotation(joint.channels[i])) continue;
        if (!listed.empty()) listed += ' ';
        listed += "xyz"[AxisOf(joint.channels[i])];
    }
    return listed;
}

double Length(const std::array<double, 3>& offset) {
    return std::hypot(offset[0], offset[1], offset[2]);
}

// Finds the lowest and the highest value of each position channel of the joints below the root.
class PositionsBelowRoot {
  public:
    PositionsBelowRoot(const BvhSection& section, const BvhFrames& frames) : section_(section) {
        for (const BvhJoint& joint : section.joints)
            if (Covers(joint)) AddColumns(joint);
        low_.assign(columns_.size(), std::numeric_limits<double>::infinity());
        high_.assign(columns_.size(), -std::numeric_limits<double>::infinity());
        for (std::size_t frame = 0; frame < frames.Count(); ++frame)
            AddFrame(frames.Frame(frame));
    }

    // Whether the joint is below the root and lists positions.
    static bool Covers(const BvhJoint& joint) {
        return joint.parent != kNoParent && joint.HasPositions();
    }

    // Whether the positions are relative to OFFSET: all of them are near 0, although most of the
    // joints that list positions have an OFFSET. `size` is the size of the figure.
    bool AreRelative(double size) const {
        std::size_t joints = 0;
        std::size_t withOffset = 0;
        for (const BvhJoint& joint : section_.joints) {
            if (!Covers(joint)) continue;
            ++joints;
            if (Length(joint.offset) > kLeastOffset * size) ++withOffset;
        }
        const double most = kRelativeRange * size;
        for (std::size_t i = 0; i < columns_.size(); ++i)
            if (low_[i] < -most || high_[i] > most) return false;
        return 2 * withOffset > joints;
    }

    // Whether each position channel of the joint keeps one value. Must be called once for each
    // joint for which Covers is true, in file order.
    bool NextIsConstant(const BvhJoint& joint, double size) {
        bool isConstant = true;
        for (std::size_t i = 0; i < joint.channelCount; ++i) {
            if (IsRotation(joint.channels[i])) continue;
            isConstant &= high_[next_] - low_[next_] <= kConstantRange * size;
            ++next_;
        }
        return isConstant;
    }

  private:
    void AddColumns(const BvhJoint& joint) {
        for (std::size_t i = 0; i < joint.channelCount; ++i)
            if (!IsRotation(joint.channels[i])) columns_.push_back(joint.firstValue + i);
    }

    void AddFrame(const double* row) {
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            const double value = row[columns_[i]];
            low_[i] = std::min(low_[i], value);
            high_[i] = std::max(high_[i], value);
        }
    }

    const BvhSection& section_;
    std::vector<std::size_t> columns_;
    std::vector<double> low_;
    std::vector<double> high_;
    std::size_t next_ = 0;
};

void Fold(const BvhJoint& joint, const double* row, bool addsOffsets, BvhJointPlan& plan) {
    plan.foldsPositions = true;
    plan.offset = joint.offset;
    for (std::size_t i = 0; i < joint.channelCount; ++i) {
        if (IsRotation(joint.channels[i])) continue;
        const std::size_t axis = AxisOf(joint.channels[i]);
        const double value = row[joint.firstValue + i];
        plan.offset[axis] = addsOffsets ? joint.offset[axis] + value : value;
    }
}

// Leaves out the positions of all joints below the root. These joints stay at their OFFSETs.
void DropPositions(const BvhSection& section, BvhPlan& plan) {
    for (std::size_t i = 0; i < section.joints.size(); ++i) {
        plan.joints[i].foldsPositions = PositionsBelowRoot::Covers(section.joints[i]);
        plan.joints[i].offset = section.joints[i].offset;
    }
}

void ReportRelative(const BvhSection& section, FindingList& findings) {
    for (const BvhJoint& joint : section.joints) {
        if (!PositionsBelowRoot::Covers(joint)) continue;
        if (findings.AddAgain(codes::kPositionRelative, Severity::Warning)) continue;
        findings.Add(
            {codes::kPositionRelative, Severity::Warning, joint.channelsAt.at,
             "the positions of all joints below the root are near 0 though the joints have "
             "an OFFSET; positions are added to OFFSET",
             joint.name, true});
    }
}

// The joints of a section that one finding is about.
struct Joints {
    const BvhJoint* first = nullptr;
    std::size_t count = 0;
    bool areMended = false;  // whether the mended text differs for at least one of them

    void Add(const BvhJoint& joint, bool isMended) {
        if (count++ == 0) first = &joint;
        areMended |= isMended;
    }
};

// If an earlier section has a finding with this code, adds the joints to it and returns true. If
// there is no such finding, returns false.
bool AddToEarlier(std::string_view code, const Joints& joints, FindingList& findings) {
    if (!findings.AddAgain(code, Severity::Note, joints.count)) return false;
    findings.Find(code)->mended |= joints.areMended;
    return true;
}

void ReportJoints(std::string_view code, const Joints& joints, const char* at, std::string message,
                  FindingList& findings) {
    findings.Add(
        {code, Severity::Note, at, std::move(message), joints.first->name, joints.areMended});
    findings.AddAgain(code, Severity::Note, joints.count - 1);
}

void ReportRising(const BvhSection& section, const Joints& joints, bool isAlike,
                  FindingList& findings) {
    const bool isReported =
        joints.count == 0 || findings.AddAgain(codes::kRotationOrder, Severity::Note, joints.count);
    if (isReported) return;
    const std::string listed = Listed(*joints.first);
    const std::string who = joints.count == 1
                                ? JointLabel(section, *joints.first) + " lists its rotations "
                                : std::to_string(joints.count) + " joints list their rotations ";
    findings.Add({codes::kRotationOrder, Severity::Note, joints.first->channelsAt.at,
                  who + (isAlike ? listed : "in rising order, the first " + listed) +
                      "; they are re-expressed, since the plug-in would turn " + listed[0] +
                      " first",
                  joints.first->name, true});
    findings.AddAgain(codes::kRotationOrder, Severity::Note, joints.count - 1);
}

void ReportConstant(const BvhSection& section, const Joints& joints, FindingList& findings) {
    const std::string_view code = codes::kPositionConstant;
    if (joints.count == 0 || AddToEarlier(code, joints, findings)) return;
    const bool isOne = joints.count == 1;
    std::string message = isOne ? JointLabel(section, *joints.first) + " lists positions"
                                : std::to_string(joints.count) + " joints list positions";
    message += " that keep one value";
    if (joints.areMended)
        message += isOne ? "; they become its OFFSET" : "; they become the joints' OFFSETs";
    ReportJoints(code, joints, joints.first->channelsAt.at, std::move(message), findings);
}

void ReportMoving(const BvhSection& section, const Joints& joints, FindingList& findings) {
    const std::string_view code = codes::kPositionMoving;
    if (joints.count == 0 || AddToEarlier(code, joints, findings)) return;
    const bool isOne = joints.count == 1;
    std::string message = isOne ? JointLabel(section, *joints.first) +
                                      " lists positions and moves apart from its parent"
                                : std::to_string(joints.count) +
                                      " joints list positions and move apart from their parents";
    if (joints.areMended)
        message += isOne ? "; its OFFSET becomes 0 0 0" : "; their OFFSETs become 0 0 0";
    ReportJoints(code, joints, joints.first->channelsAt.at, std::move(message), findings);
}

void ReportEnds(const Joints& joints, FindingList& findings) {
    const std::string_view code = codes::kEndSiteMissing;
    if (joints.count == 0 || AddToEarlier(code, joints, findings)) return;
    const bool isOne = joints.count == 1;
    std::string message = isOne ? joints.first->name + " ends without an end site"
                                : std::to_string(joints.count) + " joints end without an end site";
    if (joints.areMended) message += isOne ? "; it is given one" : "; each is given one";
    ReportJoints(code, joints, joints.first->keyword.at, std::move(message), findings);
}

}  // namespace

bool PlanRotations(const BvhSection& section, bool bones, BvhPlan& plan, FindingList& findings) {
    Joints rising;
    bool isAlike = true;
    bool areDropped = false;
    for (std::size_t i = 0; i < section.joints.size(); ++i) {
        const BvhJoint& joint = section.joints[i];
        const bool isEnd = joint.isEndSite && !joint.hasJoints;
        const bool drops = bones && isEnd && joint.HasRotations();
        const bool rises = joint.HasRisingRotations();
        plan.joints[i].dropsRotations = drops;
        plan.joints[i].reexpressesRotations = rises && !drops;
        areDropped |= drops;
        if (!rises) continue;
        rising.Add(joint, true);
        isAlike &= Listed(joint) == Listed(*rising.first);
    }
    ReportRising(section, rising, isAlike, findings);
    return areDropped;
}

bool PlanPositions(const BvhSection& section, const BvhFrames& frames, bool bones, BvhPlan& plan,
                   FindingList& findings) {
    const bool hasPositions =
        std::any_of(section.joints.begin(), section.joints.end(), PositionsBelowRoot::Covers);
    if (!hasPositions) return false;
    if (frames.Count() == 0) {
        if (bones) DropPositions(section, plan);
        return bones;
    }
    PositionsBelowRoot positions(section, frames);
    const double size = FigureSize(section, frames);
    plan.addsOffsets = positions.AreRelative(size);
    if (plan.addsOffsets) ReportRelative(section, findings);
    Joints constant;
    Joints moving;
    for (std::size_t i = 0; i < section.joints.size(); ++i) {
        const BvhJoint& joint = section.joints[i];
        if (!PositionsBelowRoot::Covers(joint)) continue;
        const bool isConstant = positions.NextIsConstant(joint, size);
        const bool changes = bones && (isConstant || Length(joint.offset) > 0.0);
        (isConstant ? constant : moving).Add(joint, changes);
        if (changes && isConstant)
            Fold(joint, frames.Frame(0), plan.addsOffsets, plan.joints[i]);
        else if (changes)
            plan.joints[i].clearsOffset = true;
    }
    if (plan.addsOffsets) return false;
    ReportConstant(section, constant, findings);
    ReportMoving(section, moving, findings);
    return false;
}

void PlanEnds(const BvhSection& section, const BvhFrames& frames, bool bones, BvhPlan& plan,
              FindingList& findings) {
    Joints open;
    double size = -1.0;  // the size of the figure; negative until it is computed
    for (std::size_t i = 0; i < section.joints.size(); ++i) {
        const BvhJoint& joint = section.joints[i];
        if (joint.isEndSite || joint.hasJoints) continue;
        open.Add(joint, bones);
        if (!bones) continue;
        BvhJointPlan& own = plan.joints[i];
        own.addsEndSite = true;
        own.endSiteOffset = own.foldsPositions ? own.offset : joint.offset;
        for (double& component : own.endSiteOffset)
            component *= kEndSiteOfOffset;
        if (Length(own.endSiteOffset) > 0.0) continue;
        if (size < 0.0) size = FigureSize(section, frames);
        own.endSiteOffset = {0.0, size > 0.0 ? kEndSiteOfBox * size : 1.0, 0.0};
    }
    ReportEnds(open, findings);
}

}  // namespace survey
