// Where every object of a model stands in a frame of a motion.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "headless/scene.h"
#include "headless/transform.h"
#include "host/export.h"

namespace headless {

// Resolves the motion's targets once; then a frame is one pass over the objects in parent order.
// Keeps references to the scene, which must not change meanwhile. Several threads may make
// evaluators of one scene, and ask one evaluator, at once.
class ZELK_API MotionEvaluator {
  public:
    // `motion` may be null: every frame is then the state in which the objects stand.
    MotionEvaluator(const Scene& scene, const Object& model, const ActionSource* motion);
    ~MotionEvaluator();
    MotionEvaluator(MotionEvaluator&&) noexcept;

    // The model, then everything below it, every parent before its children.
    const std::vector<const Object*>& Objects() const;
    // Place in Objects() of the parent of each; the model's own is its own place, 0.
    const std::vector<std::size_t>& Parents() const;

    // Scene transforms at `frame` (in the unit of the key times; between keys linear, outside them
    // the nearest key), one for each of Objects().
    void Evaluate(double frame, std::span<Transform> globals) const;
    // Local states at `frame`: the transform seen from the parent.
    void EvaluateLocal(double frame, std::span<Transform> locals) const;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

// AnimEnd divided by the time of the last key of an active curve; 0 where there is no key or no
// such quotient. A time that is no number (NaN) is passed over; after an infinite one there is no
// quotient.
ZELK_API double SecondsPerFrame(const ActionSource& motion);

}  // namespace headless
