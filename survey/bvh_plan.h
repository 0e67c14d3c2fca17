// Decides how the mended text of a section differs from the file, and reports the reasons.
#pragma once

#include <array>
#include <vector>

#include "survey/bvh_rows.h"
#include "survey/bvh_skeleton.h"
#include "survey/finding_list.h"

namespace survey {

struct BvhJointPlan {
    bool reexpressesRotations = false;  // rotations are written as other angles, in another order
    bool dropsRotations = false;  // rotations of an end site, which move nothing, are left out
    bool foldsPositions = false;  // position channels are left out; OFFSET becomes `offset`
    // OFFSET becomes 0 0 0. If a component of the old OFFSET is not 0 and has no position channel,
    // the joint gets a channel that keeps this component as its value.
    bool clearsOffset = false;
    bool addsEndSite = false;               // the joint gets an end site
    std::array<double, 3> offset{};         // only used if `foldsPositions`
    std::array<double, 3> endSiteOffset{};  // the OFFSET of the added end site
};

struct BvhPlan {
    std::vector<BvhJointPlan> joints;  // one for each joint of the section, in the same order
    // Whether positions of joints below the root are relative to OFFSET in the file. The mended
    // text then has the sums of position and OFFSET.
    bool addsOffsets = false;
    // Whether re-expressed rotations are listed x y z. In this order, only the plug-in lets the
    // rotation about x act first. If false, they are listed z y x, and every reader lets the
    // rotation about x act first.
    bool listsXyz = false;
};

// Plans to re-express the rotations of joints that list them in rising order, such as x y z. If
// `bones`, end sites lose their rotations, because no bone is built for an end site. Returns
// whether an end site loses rotations. The rows of the section need not have been read.
bool PlanRotations(const BvhSection& section, bool bones, BvhPlan& plan, FindingList& findings);

// Decides how the joints below the root that list positions are written, and reports them. If the
// positions are relative to OFFSET, the OFFSETs are added to them. If `bones`, the joints are also
// changed so that bones can be built. If the section has no frames, nothing is reported. If it has
// no frames and `bones` is true, the position channels of these joints are left out. Returns true
// only if channels are left out for this reason.
bool PlanPositions(const BvhSection& section, const BvhFrames& frames, bool bones, BvhPlan& plan,
                   FindingList& findings);

// Plans the joints that have neither children nor an end site. If `bones`, they get an end site;
// otherwise they are only reported. Must be called after PlanPositions.
void PlanEnds(const BvhSection& section, const BvhFrames& frames, bool bones, BvhPlan& plan,
              FindingList& findings);

}  // namespace survey
