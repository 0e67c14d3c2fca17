#pragma once

#include "host/arrays.h"
#include "host/constants.h"
#include "host/export.h"
#include "host/math.h"
#include "host/object.h"
#include "host/value.h"

namespace Zelk {

// One animatable value, or a set of them under one name. Positions are in scene units, rotations in
// degrees, times in frames (kCurrentTime: now).
class ZELK_API Parameter : public ProjectItem {
  public:
    using ProjectItem::ProjectItem;

    CValue GetValue(double time) const;
    // The value of the member of that name; empty without one.
    CValue GetParameterValue(const CString& name, double time) const;
};

// Where an object stands seen from its parent: members "posx" to "posz" and "rotx" to "rotz".
class ZELK_API KinematicState : public Parameter {
  public:
    using Parameter::Parameter;

    CStatus PutTransform(const MATH::CTransformation& transformation, double time);
};

class ZELK_API Kinematics : public CBase {
  public:
    using CBase::CBase;

    KinematicState GetLocal() const;
};

// A function curve: keys of (time, value), handed over whole.
class ZELK_API FCurve : public CBase {
  public:
    using CBase::CBase;

    CStatus PutInterpolation(zkFCurveInterpolation interpolation);
    // Replaces all keys. Times and values are of one length, in any order.
    CStatus SetKeys(const CTimeArray& times, const CValueArray& values, bool keepExisting);
};

class ZELK_API CustomProperty : public ProjectItem {
  public:
    using ProjectItem::ProjectItem;

    // Adds a parameter whose value is a reference to an fcurve of its own.
    CStatus AddFCurveParameter(const CString& name, Parameter& parameter);
};

}  // namespace Zelk
