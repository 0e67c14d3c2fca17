// Operations on the host's scene that both importers use. They keep no state. All objects belong to
// the scene.
#pragma once

#include "host/action.h"
#include "host/scene_objects.h"
#include "host/status.h"
#include "host/string.h"

// Returns the full name of a parameter: the names of the object's ancestors below the one named
// `stopName`, the object's own name and the parameter, joined by dots. Examples:
// "Hips.LeftArm.kine.local.rotx" for "rotx", "B1.B2.bone.length" for "bone.length". The object's
// own name is always part of it, even if that is `stopName`.
Zelk::CString GetKineParamFullName(const Zelk::CString& paramName, const Zelk::CString& stopName,
                                   Zelk3DObject& object);

// Makes a new, empty action source for the model, with a length of `animEnd` seconds. When the host
// does not make it, fails and leaves `source` empty.
Zelk::CStatus AddActionSource(Zelk::Model& model, const Zelk::CString& name,
                              Zelk::ActionSource& source, double animEnd);

// Returns the object's present local rotation and its inverse.
void GetLocalRotation(const Zelk3DObject& object, double rotation[4][4], double inverse[4][4]);

// Returns the product of the present local rotations of the object and its ancestors below
// `stopName`, and its inverse. The object's rotation acts first, and always takes part.
void GetBoneGlobalMatrix(Zelk3DObject& object, const Zelk::CString& stopName, double global[4][4],
                         double inverse[4][4]);

// Decodes a text from a file in the encoding of the process's locale, up to the first byte that is
// not valid in it. A null pointer gives an empty string.
Zelk::CString ZelkStringFromANSI(const char* text);

// Writes a line to the host's log, with the host's default severity.
void LogStatus(const Zelk::CString& message);
