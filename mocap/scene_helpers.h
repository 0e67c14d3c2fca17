// Operations on the host's scene that both importers use. They keep no state. All objects belong to
// the scene.
#pragma once

#include "host/action.h"
#include "host/scene_objects.h"
#include "host/status.h"
#include "host/string.h"

// Returns the full name of a parameter. It consists of the names of the object's ancestors below
// the object `stopName`, the object's name, and the parameter's name, joined by dots. "kine.local"
// is inserted before every parameter's name except "bone.length". Examples:
// "Hips.LeftArm.kine.local.rotx" for "rotx", "B1.B2.bone.length" for "bone.length". The full name
// always contains the object's name, even if that name is `stopName`.
Zelk::CString GetKineParamFullName(const Zelk::CString& paramName, const Zelk::CString& stopName,
                                   Zelk3DObject& object);

// Creates an empty action source for the model, with a length of `animEnd` seconds. If the host
// does not create it, fails, and `source` is empty.
Zelk::CStatus AddActionSource(Zelk::Model& model, const Zelk::CString& name,
                              Zelk::ActionSource& source, double animEnd);

// Stores the object's present local rotation in `rotation`, and the inverse of this rotation in
// `inverse`.
void GetLocalRotation(const Zelk3DObject& object, double rotation[4][4], double inverse[4][4]);

// Stores the product of the present local rotations of the object and of its ancestors below the
// object `stopName` in `global`, and the inverse of the product in `inverse`. The object's rotation
// acts first. It is always included, even if the object is named `stopName`.
void GetBoneGlobalMatrix(Zelk3DObject& object, const Zelk::CString& stopName, double global[4][4],
                         double inverse[4][4]);

// Decodes a text from a file with the encoding of the process's locale. The result ends before the
// first byte that is not valid in this encoding. It is empty if `text` is null or memory runs out.
Zelk::CString ZelkStringFromANSI(const char* text);

// Writes a line to the host's log, with the host's default severity.
void LogStatus(const Zelk::CString& message);
