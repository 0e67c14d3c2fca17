// Where things stand, worked out once more from the records and by other means than the host's: 4x4
// matrices for row vectors, plain sines, every frame on its own, up from each object.
#pragma once

#include <array>
#include <string>
#include <unordered_map>

#include "headless/scene.h"
#include "headless/transform.h"
#include "tests/support/math.h"

namespace host_test {

using support::Matrix4;

// x turns first, then y, then z, then the translation.
Matrix4 OfLocal(const std::array<double, 6>& local);
Matrix4 OfTransform(const headless::Transform& transform);

// Up the parents by the local states alone, effectors like everything else.
Matrix4 Standing(const headless::Object& object);

// At a frame of a motion. Chains below the model only, not too deep.
class MatrixWalk {
  public:
    MatrixWalk(const headless::Object& model, const headless::ActionSource& motion);
    Matrix4 Global(const headless::Object& object, double frame) const;

  private:
    // Of the channel of the object that goes by that name, or else what stands.
    double Value(const headless::Object& object, headless::Channel channel, double frame) const;
    Matrix4 Around(const headless::Object& object, double frame) const;

    const headless::Object& model_;
    std::unordered_map<std::wstring, const headless::ActionItem*> items_;
};

}  // namespace host_test
