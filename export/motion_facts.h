// What a person wants to know of a model that was imported.
// Part of the public surface of the library.
#pragma once

#include <cstddef>
#include <optional>

#include "headless/scene.h"
#include "text/api.h"

namespace exporters {

// Items of a motion that are not active count nowhere: evaluation passes them over.
struct ModelFacts {
    // Points where parts of the skeleton meet or end: nulls, and the ends of bones.
    std::size_t joints = 0;
    std::size_t curves = 0;
    std::size_t frames = 0;  // distinct key times
    double firstFrame = 0.0;
    double lastFrame = 0.0;
    // 0 where the motion does not tell.
    double secondsPerFrame = 0.0;
    // Values that are not finite numbers, in the motion's keys and in the base pose.
    std::size_t badKeys = 0;
    std::size_t badRestValues = 0;
};

// The motion that was imported onto the model; null without one.
ZKMOCAP_API const headless::ActionSource* MotionOf(const headless::Object& model);

ZKMOCAP_API ModelFacts MeasureModel(const headless::Object& model);

}  // namespace exporters
