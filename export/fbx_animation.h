// Adds a motion to an FBX file.
// Internal to export/.
#pragma once

#include "export/fbx_motion.h"
#include "export/fbx_objects.h"
#include "export/fbx_skeleton.h"

namespace exporters {

// Adds an AnimationStack with the name of the motion, with one AnimationLayer, and a curve for each
// FbxCurve. `objects` refers to arrays of the motion afterwards.
void AddFbxAnimation(FbxObjects& objects, const FbxMotion& motion, const FbxSkeleton& skeleton);

}  // namespace exporters
