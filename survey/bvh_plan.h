// Decides how a section's mended text differs from the file, and reports the reasons.
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
    bool clearsOffset = false;    // OFFSET becomes 0 0 0; all three positions are written
    bool addsEndSite = false;     // the joint gets an end site at `endSiteOffset`
    std::array<double, 3> offset{};
    std::array<double, 3> endSiteOffset{};
};

struct BvhPlan {
    std::vector<BvhJointPlan> joints;  // by index of the section's joints
    bool addsOffsets = false;          // positions in the file are relative to the OFFSETs
    // Re-expressed rotations are listed x y z: the plug-in keeps that order and lets x act first.
    // Otherwise they are listed z y x, which means the same rotation to every reader.
    bool listsXyz = false;
};

// Plans joints whose rotations are listed in rising order, such as x y z. With `bones`, end sites
// lose their rotations, for which there is no bone. Returns whether an end site does. Needs no
// rows.
bool PlanRotations(const BvhSection& section, bool bones, BvhPlan& plan, FindingList& findings);

// Plans joints below the root that list positions. With `bones` they are changed so that bones can
// be built; otherwise they are only reported. Without rows nothing is reported, and with `bones`
// the position channels are left out. Returns whether they are left out in that way.
bool PlanPositions(const BvhSection& section, const BvhFrames& frames, bool bones, BvhPlan& plan,
                   FindingList& findings);

// Plans joints that have neither children nor an end site. To be called after PlanPositions.
void PlanEnds(const BvhSection& section, const BvhFrames& frames, bool bones, BvhPlan& plan,
              FindingList& findings);

}  // namespace survey
