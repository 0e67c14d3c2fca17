// Computes the transforms of objects from the records in another way than the host does: with 4x4
// matrices for row vectors and plain sines, for each frame and each object anew, up its parents.
#pragma once

#include <array>
#include <string>
#include <unordered_map>

#include "headless/scene.h"
#include "headless/transform.h"
#include "tests/support/math.h"

namespace host_test {

using support::Matrix4;

// x rotates first, then y, then z; the translation comes last.
Matrix4 OfLocal(const std::array<double, 6>& local);
Matrix4 OfTransform(const headless::Transform& transform);

// The object's present global transform: the product of the local transforms up its parents. An
// effector is treated like any other object.
Matrix4 GlobalOf(const headless::Object& object);

// Computes global transforms at a frame of a motion. All chains must be under the model. It is
// recursive, so the scene must not be too deep.
class MatrixWalk {
  public:
    MatrixWalk(const headless::Object& model, const headless::ActionSource& motion);
    Matrix4 Global(const headless::Object& object, double frame) const;

  private:
    // The value that the motion gives the channel, or else its present value.
    double Value(const headless::Object& object, headless::Channel channel, double frame) const;
    Matrix4 Around(const headless::Object& object, double frame) const;

    const headless::Object& model_;
    std::unordered_map<std::wstring, const headless::ActionItem*> items_;
};

}  // namespace host_test
