// Reports how tall a figure is, and which axis points up.
#pragma once

#include "math/figure_shape.h"
#include "survey/finding_list.h"
#include "survey/survey.h"

namespace survey {

using math::Extent;
using math::FigureShape;

// Fills in the height, unit and up axis of `facts`. Exports take the file's numbers as metres. If
// the figure would then be much smaller or taller than a person, this is reported.
void ReportShape(const FigureShape& shape, Facts& facts, FindingList& findings);

}  // namespace survey
