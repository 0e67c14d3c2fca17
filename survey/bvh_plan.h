// What of a section is handed on otherwise than it is written.
#pragma once

#include <array>
#include <vector>

#include "survey/bvh_rows.h"
#include "survey/bvh_skeleton.h"
#include "survey/finding_list.h"

namespace survey {

struct BvhJointPlan {
    bool turns = false;                 // its rotations are re-expressed
    bool dropsRotations = false;        // they turn nothing, and are left out
    bool folds = false;                 // its positions are its OFFSET
    bool detaches = false;              // its OFFSET is 0 0 0, its positions are all listed
    bool addsEnd = false;               // it is given an end site
    std::array<double, 3> offset{};     // where it folds
    std::array<double, 3> endOffset{};  // where it is given an end site
};

struct BvhPlan {
    std::vector<BvhJointPlan> joints;
    bool addsOffsets = false;  // positions are added to OFFSETs
    // Rotations that are re-expressed are listed x y z, which the plug-in leaves as they are and
    // turns x first; otherwise z y x, which says the same to every reader.
    bool turnsRising = false;
};

// Joints whose rotations are listed in rising order; reads no rows. With `bones`, end sites lose
// rotations, which bones cannot be given there. Returns whether one does.
bool PlanRotations(const BvhSection& section, bool bones, BvhPlan& plan, FindingList& findings);

// Joints below the root that list positions. With `bones` they are made what bones can be built
// from; otherwise only told of. Without rows there is nothing to tell, and bones just lose the
// positions: returns whether one does.
bool PlanPositions(const BvhSection& section, const BvhFrames& frames, bool bones, BvhPlan& plan,
                   FindingList& findings);

// Joints without children and end site. After the positions.
void PlanEnds(const BvhSection& section, const BvhFrames& frames, bool bones, BvhPlan& plan,
              FindingList& findings);

}  // namespace survey
