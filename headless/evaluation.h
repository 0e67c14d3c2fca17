// Computes the transforms of all objects of a model at any frame of a motion.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "headless/scene.h"
#include "headless/transform.h"
#include "host/export.h"

namespace headless {

// The constructor looks up the objects that the motion changes. After that, each frame needs only
// one pass over the objects. The evaluator keeps references to the scene and the motion, which must
// not change or be destroyed while the evaluator is used. Several threads may construct evaluators
// for one scene, or use one evaluator, at the same time.
class ZELK_API MotionEvaluator {
  public:
    // `motion` may be null. Every frame then has the transforms that the objects have in the scene.
    MotionEvaluator(const Scene& scene, const Object& model, const ActionSource* motion);
    ~MotionEvaluator();
    MotionEvaluator(MotionEvaluator&&) noexcept;

    // The model and all objects under it. The model comes first, and every parent before its
    // children.
    const std::vector<const Object*>& Objects() const;
    // For each object of Objects(), the index of its parent in Objects(). For the model it is 0.
    const std::vector<std::size_t>& Parents() const;

    // Computes the global transform of each object of Objects() at `frame`. `frame` may have a
    // fraction and has the same unit as the key times. `globals` must have as many elements as
    // Objects(). Values between two keys are interpolated linearly. Before the first key the value
    // of the first key is used; after the last key, the value of the last key.
    void Evaluate(double frame, std::span<Transform> globals) const;
    // Computes the local transform of each object of Objects() at `frame`, as seen from its parent.
    // `locals` must have as many elements as Objects().
    void EvaluateLocal(double frame, std::span<Transform> locals) const;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

// The seconds that a frame lasts: AnimEnd divided by the largest key time of the active curves. A
// key time that is NaN is skipped. Returns 0 if there are no keys, or if the largest time is zero
// or infinite, or if the quotient is not finite.
ZELK_API double SecondsPerFrame(const ActionSource& motion);

}  // namespace headless
