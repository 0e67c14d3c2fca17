#include "survey/figure_shape.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "survey/codes.h"
#include "text/number_text.h"

namespace survey {
namespace {

// Heights outside of these bounds are reported. They are in metres, because exports take the file's
// numbers as metres.
constexpr double kTallest = 5.0;
constexpr double kSmallest = 0.3;
// If the unit is unknown, the finding suggests a scale that makes the figure this tall, in metres.
constexpr double kUsualHeight = 1.7;

// Writes a number above 0 with four significant digits, for messages.
std::string Rounded(double number) {
    const double power = std::pow(10.0, 3.0 - std::floor(std::log10(number)));
    if (!std::isnormal(power) || !std::isnormal(1.0 / power)) return text::NumberText(number);
    // A power of ten below 1 is not exact, so its inverse, which is exact, is used.
    const double rounded = power >= 1.0 ? std::round(number * power) / power
                                        : std::round(number * power) * std::round(1.0 / power);
    return text::NumberText(rounded);
}

}  // namespace

void ReportShape(const FigureShape& shape, Facts& facts, FindingList& findings) {
    facts.height = shape.Height();
    if (!facts.height) return;
    const math::LengthUnit* const unit = math::LikelyUnit(*facts.height);
    if (unit) facts.unit = unit->name;
    facts.up = std::string(1, "xyz"[shape.UpAxis()]);
    if (*facts.height >= kSmallest && *facts.height <= kTallest) return;
    const double scale = unit ? unit->metres : kUsualHeight / *facts.height;
    const std::string scaleText = unit ? text::NumberText(scale) : Rounded(scale);
    const std::string likely = unit ? ", likely of " + std::string(unit->name) : std::string();
    findings.Add({codes::kFigureSize, Severity::Note, nullptr,
                  "the figure is " + Rounded(*facts.height) + " tall" + likely +
                      "; exports count metres: --scale " + scaleText + " makes it " +
                      Rounded(*facts.height * scale) + " metres tall"});
}

}  // namespace survey
