// Builds the options and the run record that the exporters need.
#pragma once

#include "cli/arguments.h"
#include "export/json_record.h"
#include "export/options.h"
#include "take/import.h"

namespace cli {

// Returns the user's options with what the import adds to them: the rate, the number of models, the
// source, and a scale that undoes Result::multiplied.
exporters::Options ExportOptionsOf(const ImportRequest& request, const take::Result& result);

// Returns the record of the run. It refers to `result`, which must outlive it.
exporters::RunRecord RecordOf(const ImportRequest& request, const take::Result& result);

}  // namespace cli
