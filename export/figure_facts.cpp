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

math::Extent ExtentOf(std::span<const Transform> globals) {
    math::Extent extent;
    for (const Transform& global : globals)
        extent.Include(global.origin);
    return extent;
}

}  // namespace

FigureFacts DescribeFigure(const Table& table, const Options& options) {
    const std::size_t columns = table.Columns().size();
    const std::size_t first = table.ColumnsOfFirstModel();
    std::vector<Transform> locals(columns);
    std::vector<Transform> globals(columns);
    for (std::size_t column = 0; column < first; ++column) {
        const Table::Column& joint = table.Columns()[column];
        globals[column] =
            joint.parent == Joint::kNoParent ? joint.rest : joint.rest * globals[joint.parent];
    }
    math::FigureShape shape;
    shape.SetRest(ExtentOf(std::span(globals).first(first)));
    Table::Scratch scratch;
    const std::size_t rows = table.Times().IsPose() ? 0 : table.Rows();
    const std::size_t poses = std::min(rows, kMostPoses);
    for (std::size_t pose = 0; pose < poses; ++pose) {
        table.Row(pose * rows / poses, locals, globals, scratch);
        shape.AddFrame(ExtentOf(std::span(globals).first(first)));
    }
    FigureFacts facts;
    if (options.up == UpAxis::Y) facts.up = "xyz"[shape.UpAxis()];
    const math::LengthUnit* const unit = math::LikelyUnit(shape.Height().value_or(0.0));
    if (unit) facts.metresPerUnit = unit->metres;
    return facts;
}

}  // namespace exporters
