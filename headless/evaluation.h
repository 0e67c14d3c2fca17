// The transforms of all objects of a model at any frame of a motion.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "headless/scene.h"
#include "headless/transform.h"
#include "host/export.h"

namespace headless {

// The constructor resolves the targets of the motion; each frame is then one pass over the objects.
// The evaluator keeps references to the scene and the motion, which must not change or be destroyed
// while it is used. Several threads may construct evaluators for one scene, or use one evaluator,
// at the same time.
class ZELK_API MotionEvaluator {
  public:
    // `motion` may be null; every frame then has the transforms that the objects have at present.
    MotionEvaluator(const Scene& scene, const Object& model, const ActionSource* motion);
    ~MotionEvaluator();
    MotionEvaluator(MotionEvaluator&&) noexcept;

    // The model, then everything under it, every parent before its children.
    const std::vector<const Object*>& Objects() const;
    // For each of Objects(), the index in Objects() of its parent. For the model it is 0.
    const std::vector<std::size_t>& Parents() const;

    // Computes the global transform of each of Objects() at `frame`, which is in the unit of the
    // key times. `globals` must have as many elements as Objects(). Values between two keys are
    // interpolated linearly; before the first and after the last key, that key's value is used.
    void Evaluate(double frame, std::span<Transform> globals) const;
    // The same for the local transforms, as seen from the parents.
    void EvaluateLocal(double frame, std::span<Transform> locals) const;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

// The seconds that a frame lasts: AnimEnd divided by the largest key time of the active curves. NaN
// is skipped. Returns 0 if there are no keys, or if the largest time is zero or infinite, or if the
// quotient is not finite.
ZELK_API double SecondsPerFrame(const ActionSource& motion);

}  // namespace headless
