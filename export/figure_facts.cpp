#include "export/figure_facts.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "math/figure_shape.h"

namespace exporters {
namespace {

using headless::Transform;

// The poses of at most this many frames are looked at.
constexpr std::size_t kMostPoses = 500;

// Returns the extent of the figure with these local transforms.
math::Extent ExtentOf(const ExportedMotion& model, std::vector<Transform>& locals) {
    model.TurnTopJoints(locals);
    ComputeGlobals(model.Joints(), locals, locals);
    math::Extent extent;
    for (const Transform& global : locals)
        extent.Include(global.origin);
    return extent;
}

}  // namespace

FigureFacts DescribeFigure(const ExportedMotion& model, const Options& options) {
    std::vector<Transform> locals(model.Joints().size());
    math::FigureShape shape;
    model.BaseLocals(locals);
    shape.SetRest(ExtentOf(model, locals));
    ExportedMotion::Scratch scratch;
    const std::vector<double>& keys = model.Keys();
    const std::size_t poses = std::min(keys.size(), kMostPoses);
    for (std::size_t pose = 0; pose < poses; ++pose) {
        model.Locals(keys[pose * keys.size() / poses], locals, scratch);
        shape.AddFrame(ExtentOf(model, locals));
    }
    FigureFacts facts;
    if (options.up == UpAxis::Y)
        facts.up =
            "xyz"[options.knownUp ? static_cast<std::size_t>(*options.knownUp) : shape.UpAxis()];
    facts.height = shape.Height().value_or(0.0);
    const math::LengthUnit* const unit = math::LikelyUnit(facts.height / options.scale);
    if (unit) facts.metresPerUnit = unit->metres / options.scale;
    if (options.metresPerUnit) facts.metresPerUnit = *options.metresPerUnit / options.scale;
    return facts;
}

}  // namespace exporters
