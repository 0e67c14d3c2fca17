#pragma once

#include "host/arrays.h"
#include "host/constants.h"
#include "host/export.h"
#include "host/math.h"
#include "host/object.h"
#include "host/value.h"

namespace Zelk {

// A value that can be animated, or a named set of such values. Positions are in scene units and
// rotations in degrees. A time is in frames, or is kCurrentTime.
class ZELK_API Parameter : public ProjectItem {
  public:
    using ProjectItem::ProjectItem;

    CValue GetValue(double time) const;
    // The value of the member called `name`. The result is empty if there is no such member.
    CValue GetParameterValue(const CString& name, double time) const;
};

// The local transform of an object. Its members are "posx", "posy", "posz", "rotx", "roty" and
// "rotz"; x rotates first, then y, then z.
class ZELK_API KinematicState : public Parameter {
  public:
    using Parameter::Parameter;

    // Sets the position to the translation of `transformation`, and the rotation to zero. Fails for
    // a bone and for an effector.
    CStatus PutTransform(const MATH::CTransformation& transformation, double time);
};

class ZELK_API Kinematics : public CBase {
  public:
    using CBase::CBase;

    KinematicState GetLocal() const;
};

// A function curve ("fcurve"). It is a list of keys; each key has a time and a value.
class ZELK_API FCurve : public CBase {
  public:
    using CBase::CBase;

    CStatus PutInterpolation(zkFCurveInterpolation interpolation);
    // Sets the keys (times[i], values[i]). The times may be in any order. Fails if the arrays
    // differ in length. The existing keys are kept if `keepExisting` is true, and removed
    // otherwise.
    CStatus SetKeys(const CTimeArray& times, const CValueArray& values, bool keepExisting);
};

class ZELK_API CustomProperty : public ProjectItem {
  public:
    using ProjectItem::ProjectItem;

    // Adds a parameter with a new fcurve; the parameter's value is a reference to that fcurve.
    // Fails if `name` is empty, or if the property already has a parameter with that name.
    CStatus AddFCurveParameter(const CString& name, Parameter& parameter);
};

}  // namespace Zelk
