// Measures what a user wants to know about an imported model.
// Part of the public surface of the library.
#pragma once

#include <cstddef>
#include <optional>

#include "export/file_skeleton.h"
#include "headless/scene.h"
#include "text/api.h"

namespace exporters {

// Items of actions are counted only if they are active, because evaluation ignores all others.
struct ModelFacts {
    // The numbers of joints and of end sites that outputs hold.
    std::size_t joints = 0;
    std::size_t endSites = 0;
    std::size_t curves = 0;
    std::size_t frames = 0;         // distinct key times
    double firstFrame = 0.0;        // the first key time; 0 if there are no keys
    double lastFrame = 0.0;         // the last key time; 0 if there are no keys
    double secondsPerFrame = 0.0;   // 0 if the motion has no rate
    std::size_t badKeys = 0;        // values of the motion's keys that are not finite
    std::size_t badRestValues = 0;  // values of the base pose that are not finite
};

// Returns the motion that was imported last onto the model. Null if the model has no motion.
ZKMOCAP_API const headless::ActionSource* MotionOf(const headless::Object& model);

// Measures the model, with the motion that MotionOf returns. `file` is the skeleton of the file
// from which the model was made; null if it is not known.
ZKMOCAP_API ModelFacts MeasureModel(const headless::Scene& scene, const headless::Object& model,
                                    const FileSkeleton* file = nullptr);

}  // namespace exporters
