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

// Parts of the figure's size: what a position that keeps one value may vary by, what one that is
// counted from the OFFSET is away from 0, and what an OFFSET is at least.
constexpr double kConstant = 1e-6;
constexpr double kRelative = 1e-4;
constexpr double kOffset = 2e-4;
// Of an end site that is added: parts of the joint's own offset and of the rest box's diagonal.
constexpr double kOfOffset = 0.25;
constexpr double kOfBox = 0.05;

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

// The positions of joints below the root: the least and the largest value of each channel.
class LoosePositions {
  public:
    LoosePositions(const BvhSection& section, const BvhFrames& frames) : section_(section) {
        for (const BvhJoint& joint : section.joints)
            if (IsLoose(joint)) AddColumns(joint);
        low_.assign(columns_.size(), std::numeric_limits<double>::infinity());
        high_.assign(columns_.size(), -std::numeric_limits<double>::infinity());
        for (std::size_t frame = 0; frame < frames.Count(); ++frame)
            AddFrame(frames.Frame(frame));
    }

    static bool IsLoose(const BvhJoint& joint) {
        return joint.parent != kNoParent && joint.HasPositions();
    }

    bool IsEmpty() const { return columns_.empty(); }

    // Whether all are near 0, though most of the joints have an OFFSET.
    bool AreRelative(double size) const {
        std::size_t joints = 0;
        std::size_t withOffset = 0;
        for (const BvhJoint& joint : section_.joints) {
            if (!IsLoose(joint)) continue;
            ++joints;
            if (Length(joint.offset) > kOffset * size) ++withOffset;
        }
        const double most = kRelative * size;
        for (std::size_t i = 0; i < columns_.size(); ++i)
            if (low_[i] < -most || high_[i] > most) return false;
        return 2 * withOffset > joints;
    }

    // To be asked joint by joint, in their order.
    bool NextIsConstant(const BvhJoint& joint, double size) {
        bool isConstant = true;
        for (std::size_t i = 0; i < joint.channelCount; ++i) {
            if (IsRotation(joint.channels[i])) continue;
            isConstant &= high_[next_] - low_[next_] <= kConstant * size;
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
    plan.folds = true;
    plan.offset = joint.offset;
    for (std::size_t i = 0; i < joint.channelCount; ++i) {
        if (IsRotation(joint.channels[i])) continue;
        const std::size_t axis = AxisOf(joint.channels[i]);
        const double value = row[joint.firstValue + i];
        plan.offset[axis] = addsOffsets ? joint.offset[axis] + value : value;
    }
}

// The joints stay at their OFFSETs.
void DropPositions(const BvhSection& section, BvhPlan& plan) {
    for (std::size_t i = 0; i < section.joints.size(); ++i) {
        plan.joints[i].folds = LoosePositions::IsLoose(section.joints[i]);
        plan.joints[i].offset = section.joints[i].offset;
    }
}

void TellRelative(const BvhSection& section, FindingList& findings) {
    for (const BvhJoint& joint : section.joints) {
        if (!LoosePositions::IsLoose(joint)) continue;
        if (findings.AddAgain(codes::kPositionRelative, Severity::Warning)) continue;
        findings.Add(
            {codes::kPositionRelative, Severity::Warning, joint.channelsAt.at,
             "the positions of all joints below the root are near 0 though the joints have "
             "an OFFSET; positions are added to OFFSET",
             joint.name, true});
    }
}

// Joints of a section that are told of in one finding.
struct Joints {
    const BvhJoint* first = nullptr;
    std::size_t count = 0;
    bool areMended = false;  // some are written otherwise

    void Add(const BvhJoint& joint, bool isMended) {
        if (count++ == 0) first = &joint;
        areMended |= isMended;
    }
};

// Adds them to what an earlier section has told; false where it has told nothing.
bool AddToEarlier(std::string_view code, const Joints& joints, FindingList& findings) {
    if (!findings.AddAgain(code, Severity::Note, joints.count)) return false;
    findings.Find(code)->mended |= joints.areMended;
    return true;
}

void TellJoints(std::string_view code, const Joints& joints, const char* at, std::string message,
                FindingList& findings) {
    findings.Add(
        {code, Severity::Note, at, std::move(message), joints.first->name, joints.areMended});
    findings.AddAgain(code, Severity::Note, joints.count - 1);
}

void TellRising(const BvhSection& section, const Joints& joints, bool isAlike,
                FindingList& findings) {
    const bool isTold =
        joints.count == 0 || findings.AddAgain(codes::kRotationOrder, Severity::Note, joints.count);
    if (isTold) return;
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

void TellConstant(const BvhSection& section, const Joints& joints, FindingList& findings) {
    const std::string_view code = codes::kPositionConstant;
    if (joints.count == 0 || AddToEarlier(code, joints, findings)) return;
    const bool isOne = joints.count == 1;
    std::string message = isOne ? JointLabel(section, *joints.first) + " lists positions"
                                : std::to_string(joints.count) + " joints list positions";
    message += " that keep one value";
    if (joints.areMended)
        message += isOne ? "; they become its OFFSET" : "; they become the joints' OFFSETs";
    TellJoints(code, joints, joints.first->channelsAt.at, std::move(message), findings);
}

void TellMoving(const BvhSection& section, const Joints& joints, FindingList& findings) {
    const std::string_view code = codes::kPositionMoving;
    if (joints.count == 0 || AddToEarlier(code, joints, findings)) return;
    const bool isOne = joints.count == 1;
    std::string message = isOne ? JointLabel(section, *joints.first) +
                                      " lists positions and moves apart from its parent"
                                : std::to_string(joints.count) +
                                      " joints list positions and move apart from their parents";
    if (joints.areMended)
        message += isOne ? "; its OFFSET becomes 0 0 0" : "; their OFFSETs become 0 0 0";
    TellJoints(code, joints, joints.first->channelsAt.at, std::move(message), findings);
}

void TellEnds(const Joints& joints, FindingList& findings) {
    const std::string_view code = codes::kEndSiteMissing;
    if (joints.count == 0 || AddToEarlier(code, joints, findings)) return;
    const bool isOne = joints.count == 1;
    std::string message = isOne ? joints.first->name + " ends without an end site"
                                : std::to_string(joints.count) + " joints end without an end site";
    if (joints.areMended) message += isOne ? "; it is given one" : "; each is given one";
    TellJoints(code, joints, joints.first->keyword.at, std::move(message), findings);
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
        plan.joints[i].turns = rises && !drops;
        areDropped |= drops;
        if (!rises) continue;
        rising.Add(joint, true);
        isAlike &= Listed(joint) == Listed(*rising.first);
    }
    TellRising(section, rising, isAlike, findings);
    return areDropped;
}

bool PlanPositions(const BvhSection& section, const BvhFrames& frames, bool bones, BvhPlan& plan,
                   FindingList& findings) {
    const bool isLoose =
        std::any_of(section.joints.begin(), section.joints.end(), LoosePositions::IsLoose);
    if (!isLoose) return false;
    if (frames.Count() == 0) {
        if (bones) DropPositions(section, plan);
        return bones;
    }
    LoosePositions positions(section, frames);
    const double size = FigureSize(section, frames);
    plan.addsOffsets = positions.AreRelative(size);
    if (plan.addsOffsets) TellRelative(section, findings);
    Joints constant;
    Joints moving;
    for (std::size_t i = 0; i < section.joints.size(); ++i) {
        const BvhJoint& joint = section.joints[i];
        if (!LoosePositions::IsLoose(joint)) continue;
        const bool isConstant = positions.NextIsConstant(joint, size);
        const bool changes = bones && (isConstant || Length(joint.offset) > 0.0);
        (isConstant ? constant : moving).Add(joint, changes);
        if (changes && isConstant)
            Fold(joint, frames.Frame(0), plan.addsOffsets, plan.joints[i]);
        else if (changes)
            plan.joints[i].detaches = true;
    }
    if (plan.addsOffsets) return false;
    TellConstant(section, constant, findings);
    TellMoving(section, moving, findings);
    return false;
}

void PlanEnds(const BvhSection& section, const BvhFrames& frames, bool bones, BvhPlan& plan,
              FindingList& findings) {
    Joints open;
    double size = -1.0;  // told where it is needed
    for (std::size_t i = 0; i < section.joints.size(); ++i) {
        const BvhJoint& joint = section.joints[i];
        if (joint.isEndSite || joint.hasJoints) continue;
        open.Add(joint, bones);
        if (!bones) continue;
        BvhJointPlan& own = plan.joints[i];
        own.addsEnd = true;
        own.endOffset = own.folds ? own.offset : joint.offset;
        for (double& component : own.endOffset)
            component *= kOfOffset;
        if (Length(own.endOffset) > 0.0) continue;
        if (size < 0.0) size = FigureSize(section, frames);
        own.endOffset = {0.0, size > 0.0 ? kOfBox * size : 1.0, 0.0};
    }
    TellEnds(open, findings);
}

}  // namespace survey
