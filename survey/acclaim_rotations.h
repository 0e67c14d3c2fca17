// Axis orders of Acclaim files: the angle at index i rotates about the axis that letter i names,
// and the first one acts first.
#pragma once

#include "survey/acclaim_skeleton.h"
#include "survey/finding_list.h"

namespace survey {

// Writes the angles, in radians, of a rotation matrix for row vectors: rotating about x, then y,
// then z is the same as `m`. The middle angle is between -90 and 90 degrees.
void AnglesOf(const double m[4][4], double angles[3]);

// Factor from degrees, or else from radians, to radians.
double RadiansPerUnit(bool degrees);

// Re-expresses axes, and the root's orientation, whose order is not XYZ as angles in that order,
// and reports them.
void ReexpressAxes(AsfSkeleton& skeleton, FindingList& findings);

}  // namespace survey
