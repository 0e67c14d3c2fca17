// Guesses in which unit the positions of a model are, and which axis points up.
// Internal to export/.
#pragma once

#include "export/exported_motion.h"
#include "export/options.h"

namespace exporters {

struct FigureFacts {
    double metresPerUnit = 0.0;  // the length of one unit, in metres; 0 if it is not known
    double height = 0.0;         // in the unit of the positions; 0 if it is not known
    char up = 'y';               // 'x', 'y' or 'z'
};

// Describes the positions of a model after all options. If the options turn the scene, the up axis
// is known to be y. Otherwise it is the one along which the figure is longest in most frames of its
// motion, also of those that are not written. The unit of the file is the one in which the figure
// has the height of a person; options.scale changes it. If the options state the unit or the up
// axis, these are used instead.
FigureFacts DescribeFigure(const ExportedMotion& model, const Options& options);

}  // namespace exporters
