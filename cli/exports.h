// The options and the record that the exporters need from an import.
#pragma once

#include "cli/arguments.h"
#include "export/json_record.h"
#include "export/options.h"
#include "take/import.h"

namespace cli {

// Returns the user's options, completed with the results of the import: rate, scale, models,
// source.
exporters::Options ExportOptionsOf(const ImportRequest& request, const take::Result& result);

// Returns the record of the run. It points into `result`.
exporters::RunRecord RecordOf(const ImportRequest& request, const take::Result& result);

}  // namespace cli
