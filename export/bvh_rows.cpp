#include "export/bvh_rows.h"

#include <algorithm>
#include <utility>

#include "export/block_parts.h"
#include "export/finite_check.h"
#include "export/lane_poses.h"
#include "export/quaternion.h"
#include "export/readable_name.h"
#include "export/run_parts.h"
#include "text/number_text.h"
#include "threads/block_order.h"

namespace exporters {
namespace {

using headless::Transform;
using math::kPoseLanes;
using math::PoseLanes;

}  // namespace

BvhRows::BvhRows(const headless::Scene& scene, const headless::Object& model,
                 const ExportedMotion& motion, BvhRowLayout layout)
    : model_(model),
      motion_(motion),
      layout_(std::move(layout)),
      frames_(std::max<std::size_t>(motion.Times().frames.size(), 1)),
      joints_(motion.Joints().size()),
      longestRow_((joints_ + 1) * 6 * (text::kLongestNumber + 1) + 1),
      before_(joints_) {
    if (!layout_.isPrecise && !motion.Times().IsPose())
        blocks_.emplace(scene, model, motion, motion.Times().frames, false);
    if (!layout_.addedRoot) return;
    const BvhAngles angles = AnglesNear(layout_.addedRoot->axes, {});
    addedText_.resize(longestRow_);
    char* end = addedText_.data();
    for (const double coordinate : layout_.addedRoot->origin)
        end = WriteCell(end, coordinate, layout_.lengthDecimals);
    for (const double angle : {angles.z, angles.x, angles.y})
        end = WriteCell(end, angle, layout_.angleDecimals);
    addedText_.resize(static_cast<std::size_t>(end - addedText_.data()));
}

void BvhRows::Write(text::ByteSink& out, const Progress& progress) {
    enum Step : std::size_t { Angles, Text, Steps };
    const std::size_t share = FramesAtOnce(longestRow_);
    std::vector<Part> parts(PartsFor(frames_ * joints_));
    threads::BlockOrder order(Steps);
    order.Run((frames_ + share - 1) / share, parts.size(),
              [&](std::size_t thread, std::size_t block) {
                  Part& part = parts[thread];
                  part.first = block * share;
                  part.end = std::min(part.first + share, frames_);
                  Compute(part);
                  order.InOrder(Angles, block, [&] { ChooseAngles(part); });
                  // Only the calling thread reports progress.
                  MakeText(part, thread == 0 ? progress : Progress());
                  order.InOrder(Text, block, [&] { out.Write({part.text.data(), part.size}); });
              });
}

void BvhRows::Compute(Part& part) const {
    part.poses.resize((part.end - part.first) * joints_);
    if (!blocks_) {
        for (std::size_t frame = part.first; frame < part.end; ++frame)
            ComputeFrame(frame, part);
        return;
    }
    for (std::size_t frame = part.first; frame < part.end; frame += kPoseLanes)
        ComputeBlock(frame, std::min(kPoseLanes, part.end - frame), part);
}

void BvhRows::ComputeBlock(std::size_t first, std::size_t count, Part& part) const {
    blocks_->Begin(first, count, part.scratch);
    PoseLanes pose;
    math::AngleLanes angles;
    double cosines[kPoseLanes];
    for (std::size_t joint = 0; joint < joints_; ++joint) {
        if (layout_.kinds[joint] == BvhKind::EndSite) continue;
        blocks_->Local(joint, part.scratch, pose);
        if (joint == 0 && layout_.rootTurn) TurnPoses(*layout_.rootTurn, pose);
        math::BvhAnglesOf(pose, angles, cosines);
        Pose* out = &part.poses[(first - part.first) * joints_ + joint];
        for (std::size_t lane = 0; lane < count; ++lane, out += joints_) {
            for (std::size_t axis = 0; axis < 3; ++axis)
                out->origin[axis] = pose.position[axis][lane];
            out->angles.angles = {angles.angle[2][lane], angles.angle[0][lane],
                                  angles.angle[1][lane]};
            out->angles.isGimbalLocked = cosines[lane] < math::kLockedCosine;
            if (!out->angles.isGimbalLocked) continue;
            for (std::size_t number = 0; number < 4; ++number)
                out->rotation[number] = pose.rotation[number][lane];
        }
    }
}

void BvhRows::ComputeFrame(std::size_t frame, Part& part) const {
    std::vector<Transform> locals(joints_);
    if (motion_.Times().IsPose())
        motion_.BaseLocals(locals);
    else
        motion_.Locals(motion_.Times().frames[frame], locals, part.motion);
    if (joints_ > 0 && layout_.rootTurn) locals[0] = locals[0] * *layout_.rootTurn;
    std::vector<PrincipalAngles> angles(joints_);
    AnglesOf(locals, angles);
    for (std::size_t joint = 0; joint < joints_; ++joint) {
        Pose& pose = part.poses[(frame - part.first) * joints_ + joint];
        std::copy_n(locals[joint].origin, 3, pose.origin);
        pose.angles = angles[joint];
        if (!pose.angles.isGimbalLocked) continue;
        const Quaternion q = QuaternionOf(locals[joint].axes);
        const double numbers[] = {q.x, q.y, q.z, q.w};
        std::copy_n(numbers, 4, pose.rotation);
    }
}

// Replaces the principal angles by those that are nearest to the angles of the frame before.
void BvhRows::ChooseAngles(Part& part) {
    Pose* pose = part.poses.data();
    for (std::size_t frame = part.first; frame < part.end; ++frame)
        for (std::size_t joint = 0; joint < joints_; ++joint, ++pose) {
            if (layout_.kinds[joint] == BvhKind::EndSite) continue;
            double axes[3][3] = {};
            if (pose->angles.isGimbalLocked)
                PutAxes(
                    {pose->rotation[0], pose->rotation[1], pose->rotation[2], pose->rotation[3]},
                    axes);
            before_[joint] = AnglesNear(pose->angles, axes, before_[joint]);
            pose->angles.angles = before_[joint];
        }
}

void BvhRows::MakeText(Part& part, const Progress& progress) const {
    part.text.resize((part.end - part.first) * longestRow_);
    char* end = part.text.data();
    const Pose* pose = part.poses.data();
    for (std::size_t frame = part.first; frame < part.end; ++frame) {
        progress.Report(frame, frames_);
        end = std::copy(addedText_.begin(), addedText_.end(), end);
        for (std::size_t joint = 0; joint < joints_; ++joint, ++pose) {
            if (layout_.kinds[joint] == BvhKind::EndSite) continue;
            if (layout_.kinds[joint] == BvhKind::Moving)
                for (const double coordinate : pose->origin)
                    end = WriteCell(end, coordinate, layout_.lengthDecimals);
            const BvhAngles& angles = pose->angles.angles;
            for (const double angle : {angles.z, angles.x, angles.y})
                end = WriteCell(end, angle, layout_.angleDecimals);
        }
        // The blank after the last number.
        end[-1] = '\n';
    }
    part.size = static_cast<std::size_t>(end - part.text.data());
}

// Appends the number and a blank to the text that ends at `end`. Returns the new end.
char* BvhRows::WriteCell(char* end, double number, int decimals) const {
    if (!IsFinite(number))
        throw ExportError(ReadableName(model_.name) +
                          ": a position, angle or time is not a finite number");
    end = text::WriteNumber(end, number, decimals);
    *end++ = ' ';
    return end;
}

}  // namespace exporters
