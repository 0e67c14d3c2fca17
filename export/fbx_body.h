// Adds the body of a model to an FBX file, so that a figure is seen.
// Internal to export/.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "export/exported_motion.h"
#include "export/fbx_objects.h"
#include "export/options.h"
#include "headless/transform.h"

namespace exporters {

// An object and its global transform in the base pose.
struct FbxPlaced {
    std::int64_t id = 0;
    headless::Transform global;
};

// Adds a Mesh with the shapes of BuildBody, and a skin in which each joint is a cluster. `name` is
// that of the model. `placed` has the model, which is followed by its joints; the body is added to
// it. If there are too many joints for a body, or if there are none, nothing is added. Throws
// ExportError if a coordinate does not fit.
void AddFbxBody(FbxObjects& objects, const std::string& name, const ExportedMotion& pose,
                std::vector<FbxPlaced>& placed, Notes& notes);

}  // namespace exporters
