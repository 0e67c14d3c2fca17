// What an import hands to the exporters.
#pragma once

#include "cli/arguments.h"
#include "export/json_record.h"
#include "export/options.h"
#include "take/import.h"

namespace cli {

// The options of the outputs, with what the import settled.
exporters::Options ExportOptionsOf(const ImportRequest& request, const take::Result& result);

// The record of the run. Refers to the result.
exporters::RunRecord RecordOf(const ImportRequest& request, const take::Result& result);

}  // namespace cli
