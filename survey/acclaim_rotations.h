// Orders of axes in Acclaim files: value i turns about letter i, the first letter first.
#pragma once

#include "survey/acclaim_skeleton.h"
#include "survey/finding_list.h"

namespace survey {

// The angles, in radians, that turn about x, then y, then z as `m` does; the middle one is within a
// quarter turn.
void AnglesOf(const double m[4][4], double angles[3]);

// From degrees, or from radians: the angles in radians per unit.
double RadiansPerUnit(bool degrees);

// Axes and the root's orientation in other orders are made x y z, and told.
void ReexpressAxes(AsfSkeleton& skeleton, FindingList& findings);

}  // namespace survey
