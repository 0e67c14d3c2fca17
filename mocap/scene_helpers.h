// Recurring exchanges with the host's scene. No state; everything touched belongs to the scene.
#pragma once

#include "host/action.h"
#include "host/scene_objects.h"
#include "host/status.h"
#include "host/string.h"

// The path of a parameter from the ancestor below `stopName` down: "Hips.LeftArm.kine.local.rotx"
// for "rotx", "B1.B2.bone.length" for "bone.length". The object's own name is always part of it.
Zelk::CString GetKineParamFullName(const Zelk::CString& paramName, const Zelk::CString& stopName,
                                   Zelk3DObject& object);

// A new, empty action source of the model, ending at `animEnd` seconds. Fails, with `source` empty,
// where the host does not make it.
Zelk::CStatus AddActionSource(Zelk::Model& model, const Zelk::CString& name,
                              Zelk::ActionSource& source, double animEnd);

// The object's own rotation as it stands in the scene, and the inverse of it.
void GetLocalRotation(const Zelk3DObject& object, double rotation[4][4], double inverse[4][4]);

// The rotations of the object and its ancestors below `stopName` as they stand in the scene, the
// object's acting first, and the inverse of that. The object itself always counts.
void GetBoneGlobalMatrix(Zelk3DObject& object, const Zelk::CString& stopName, double global[4][4],
                         double inverse[4][4]);

// The host string of a text from a file, by the process's character locale; up to the first byte
// that has no character there. Null gives an empty string.
Zelk::CString ZelkStringFromANSI(const char* text);

// One line to the host's log, with its default severity.
void LogStatus(const Zelk::CString& message);
