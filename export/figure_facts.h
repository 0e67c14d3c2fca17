// Guesses in which unit the positions of a table are, and which axis points up.
// Internal to export/.
#pragma once

#include "export/options.h"
#include "export/tables.h"

namespace exporters {

struct FigureFacts {
    double metresPerUnit = 0.0;  // the length of one unit, in metres; 0 if it is not known
    char up = 'y';               // 'x', 'y' or 'z'
};

// Describes the positions as the table has them, after all options. The first model decides. If
// the options turn the scene, the up axis is known to be y. Otherwise it is the one along which the
// figure is longest in most frames. The unit is the one in which the figure has the height of a
// person.
FigureFacts DescribeFigure(const Table& table, const Options& options);

}  // namespace exporters
