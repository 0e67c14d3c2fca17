// Axis orders of Acclaim files, such as ZYX. The angle at index i rotates about the axis that the
// letter at index i names. The rotation at index 0 acts first.
#pragma once

#include "survey/acclaim_skeleton.h"
#include "survey/finding_list.h"

namespace survey {

// Converts `m`, a rotation matrix for row vectors, to angles about x, y and z in radians. Rotating
// about x, then y, then z is the same as `m`. The angle about y is between -90 and 90 degrees.
void AnglesOf(const double m[4][4], double angles[3]);

// The factor that converts an angle to radians. `degrees` says that the angle is in degrees;
// otherwise it is in radians already.
double RadiansPerUnit(bool degrees);

// Looks for bones whose axis is not in the order XYZ; the axis of the root is its orientation.
// Replaces the angles of such an axis by angles in the order XYZ, and reports that.
void ReexpressAxes(AsfSkeleton& skeleton, FindingList& findings);

}  // namespace survey
