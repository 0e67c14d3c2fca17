// Measures what a user wants to know about an imported model.
// Part of the public surface of the library.
#pragma once

#include <cstddef>
#include <optional>

#include "headless/scene.h"
#include "text/api.h"

namespace exporters {

// Items of actions are counted only if they are active, because evaluation ignores all others.
struct ModelFacts {
    // The number of joints and that of end sites. In a skeleton of nulls, an end site is a null
    // without children that no curve drives and that has the name of an end site ("Hand_End" under
    // "Hand"); all other nulls are joints. In a skeleton of bones, a joint is a bone or a null, but
    // not a bone that leads from a parent joint to the first joint of its chain; an end site is the
    // end of a chain that nothing continues. Both skeletons of one file have the same numbers,
    // unless bones cannot show a joint: a last joint without an end site counts as an end site.
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

// Measures the model, with the motion that MotionOf returns.
ZKMOCAP_API ModelFacts MeasureModel(const headless::Object& model);

}  // namespace exporters
