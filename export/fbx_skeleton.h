// Adds the skeleton of a model to an FBX file.
// Internal to export/.
#pragma once

#include <cstdint>
#include <vector>

#include "export/exported_motion.h"
#include "export/fbx_objects.h"
#include "export/options.h"
#include "headless/scene.h"

namespace exporters {

struct FbxSkeleton {
    std::vector<std::int64_t> joints;  // the ids of the joints' objects
    // The values of all channels in the base pose: JointChannels::kCount for each joint.
    std::vector<double> rest;
};

// Adds a Null with the name of the model. It has the turn of `pose`, which evaluates the base pose.
// Under it is a LimbNode for each joint. If options.mesh is set, a body is added. A BindPose has
// the base pose. Throws ExportError if a number does not fit.
FbxSkeleton AddFbxSkeleton(FbxObjects& objects, const headless::Scene& scene,
                           const ExportedModel& model, const ExportedMotion& pose,
                           const Options& options, Notes& notes);

}  // namespace exporters
